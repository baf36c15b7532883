// What leaves the shared object, and with which binding.
#pragma once

#ifdef NDEBUG
#error "the assertion of the context is behaviour: build without NDEBUG"
#endif

#define OC_EXPORT __attribute__((visibility("default")))
// At definitions only: on a declaration it would make a hand-written definition weak too.
#define OC_EXPORT_WEAK __attribute__((visibility("default"), weak))

#define OC_JOIN_(a, b) a##b
#define OC_JOIN(a, b) OC_JOIN_(a, b)
#define OC_TEXT_(a) #a
#define OC_TEXT(a) OC_TEXT_(a)
