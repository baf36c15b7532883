// A small model for walk tests: its table, and the declarations of its callbacks and hooks, which recorder.cc defines.
#pragma once

#include "engine/export.h"
#include "zmf.h"

#define OC_MODEL ymap_ox_oc_optical_testmodel
#define OC_TABLE "test_model.def"
#define TEST_NS "urn:test"

#include "engine/readings/declarations.inc"
