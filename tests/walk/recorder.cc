// Callbacks and hooks of the test model: each logs its call and answers by the script (see fake.h).
#include "test_model.h"

#include "fake.h"

#define HOOK(name)                                                                                                     \
    rcode OC_JOIN(OC_MODEL, OC_JOIN(_##name, _parse_augments))(zmf_map_ctx ctx, const zmf_datatree *node,              \
                                                               zmf_datatree *) {                                       \
        return fake::called(ctx, "?" #name, node);                                                                     \
    }
#define NODE(kind, name)                                                                                               \
    rcode OC_JOIN(OC_MODEL, _##kind##_##name)(zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *) {             \
        return fake::called(ctx, #name, node);                                                                         \
    }
#define CONT(depth, tag, name, ...)                                                                                    \
    rcode OC_JOIN(OC_MODEL, _cont_##name)(zmf_map_ctx ctx, const zmf_datatree *node, unsigned int count,               \
                                          zmf_datatree *) {                                                            \
        return fake::called(ctx, #name, node, static_cast<int>(count));                                                \
    }                                                                                                                  \
    HOOK(name)
#define CONT_GET(depth, tag, name, ...) CONT(depth, tag, name, )
#define ROOT(tag, name, ...) CONT(0, tag, name, )
#define AUGMENT(name) HOOK(name)
#define LIST(depth, tag, name, list_path, ...) NODE(list, name) HOOK(name)
#define LIST_GET(depth, tag, name, list_path, ...) LIST(depth, tag, name, list_path, )
#define KEY(depth, tag, name, ...) NODE(leaf, name)
#define LEAF(depth, tag, name, ...) NODE(leaf, name)
#define LEAFLIST(depth, tag, name, ...) NODE(leaf, name)

extern "C" {
#include "test_model.def"
}
