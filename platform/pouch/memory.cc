// Releasing what a record points to. Pointers are null afterwards, so that it may be done twice.
#include "pouch/memory.h"

#include <cstdlib>

namespace pouch {
namespace {

void release(const shape &what, uint8_t *at);

void release_entries(const shape &inner, uint64_t count, uint8_t *at) {
    if (inner.owns)
        for (; count > 0; --count, at += inner.size)
            release(inner, at);
}

void release(const shape &what, uint8_t *at) {
    switch (what.what) {
    case kind::record:
        return pouch::release(*what.record, at);
    case kind::array:
        return release_entries(*what.inner, what.count, at);
    case kind::list: {
        const auto words = load<list_words>(at);
        if (words.entries != nullptr)
            release_entries(*what.inner, words.count, words.entries);
        std::free(words.entries);
        store(at, list_words{});
        return;
    }
    case kind::optional:
    case kind::text: {
        auto *const held = load<uint8_t *>(at);
        if (held != nullptr && what.what == kind::optional && what.inner->owns)
            release(*what.inner, held);
        std::free(held);
        store<uint8_t *>(at, nullptr);
        return;
    }
    default:
        return;
    }
}

} // namespace

void release(const record_shape &what, uint8_t *at) {
    for (const placed_field &each : what.fields) {
        if (!each.what->owns)
            continue;
        if (each.what->what != kind::choice)
            release(*each.what, at + each.offset);
        else if (const chosen_shape *chosen = each.what->chosen(at))
            release(*chosen->what, at + each.offset);
    }
}

} // namespace pouch
