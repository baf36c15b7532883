/* The mapping framework as the plug-in sees it: status codes, request kinds, trees, contexts, and every operation of
 * the framework and of its tracing. Compiles as C11 and as C++20. LP64, little-endian.
 *
 *  - All texts are zero-terminated. A null pointer means "no text" and is not the same as "".
 *  - A callback, walker or conversion gets its input node as `const`; walkers cast that away, so a node handed to a
 *    walker lives in writable memory.
 *  - Questions return bool, statuses return rcode, calls whose result nobody reads return void.
 *  - A trailing member `framework` belongs to the framework; the plug-in never reads or writes it.
 */
#ifndef OCOPTICAL_ZMF_H
#define OCOPTICAL_ZMF_H

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

#ifdef __GNUC__
#define ZMF_PRINTF(at, first) __attribute__((format(printf, at, first)))
#else
#define ZMF_PRINTF(at, first)
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Status codes. */
typedef uint32_t rcode; /* 0 = success */

#define RC_OK ((rcode)0u)
#define RC_SUBTREE_ERROR ((rcode)0xaaf29e00u)
#define RC_INVALID_ARGUMENTS ((rcode)0xaaf2a000u)
#define RC_NO_MEMORY ((rcode)0xaaf2a400u)
#define RC_UNSUPPORTED_NODE ((rcode)0xaaf2ee00u)
#define RC_LIST_KEY_ERROR ((rcode)0xaaf2f000u)
#define RC_KEY_DELETE ((rcode)0xaaf2f200u)
#define RC_NAMESPACE_MISSING ((rcode)0xaaf2f400u)
#define RC_NOT_MAPPED ((rcode)0xaaf2f600u)
#define RC_UNSUPPORTED_AUGMENT ((rcode)0xaaf2f800u)
#define RC_LEAF_EXISTS ((rcode)0xaaf2fc00u)
#define RC_VALUE_OUT_OF_RANGE ((rcode)0xaaf2fe00u)
#define RC_STATEDB_UNAVAILABLE ((rcode)0x8081c200u)
#define OCOPTICAL_BAD_NAME ((rcode)0xffffffffu) /* all bits set: a name that does not convert */

/* Enumerations. */
enum { OP_GET_CONFIG = 0, OP_EDIT = 1, OP_EDIT_CHECKED = 8, OP_GET = 10, OP_EDIT_FULL = 15 }; /* op_type */
#define ZMF_KEYED_KINDS 0x8102u /* kinds 1, 8, 15 below 16: list keys are required */
enum { OP_MERGE = 0, OP_REPLACE = 1, OP_DELETE = 3, OP_REMOVE = 4 }; /* node `op` */
enum {
    ZMF_KIND_LEAF = 1,
    ZMF_KIND_LEAF_LIST = 2,
    ZMF_KIND_CONTAINER = 3,
    ZMF_KIND_LIST = 4,
    ZMF_KIND_CONTENT_MATCH = 6
};                                                  /* schema_kind */
enum { ZMF_HIER_CONTAINER = 1, ZMF_HIER_LIST = 2 }; /* third argument of zmf_map_add_to_node_hierarchy */
enum { ZMF_NODE_TYPE_XPATH_ERROR = 5 };             /* node_type, valid with typed_node */
enum { PASS_DELETE = 64, PASS_ADD = 128 };          /* pass_flags */
#define FILTER_ALL_SIBLINGS 0x1u
#define FILTER_SELECTION 0x2u
#define FILTER_CONTENT 0x4u
#define FILTER_CONTENT_SEEN 0x10000u
#define FILTER_ENTRY_MASK 0x11111110u                     /* a literal; not ~1 */
enum { ZMF_XPATH_FIND_LIST = 2, ZMF_XPATH_SET_LEAF = 3 }; /* zmf_map_xpath_op.kind */
enum { ITYPE_NONE = 0, ITYPE_ETHERNET = 3, ITYPE_COHERENT_DSP = 4, ITYPE_ODU = 5, ITYPE_OTU4 = 6 };

/* Data tree node. */
struct zmf_datatree {
    const char *tag;               /* local name; may be null */
    const char *value;             /* leaf value; null for others */
    const char *ns;                /* namespace URI */
    char *value_ns;                /* namespace of an identity value; zmf_strdup text; valid with has_value_ns */
    uint32_t op;                   /* OP_MERGE.. of THIS node only; never inherited */
    struct zmf_datatree *children; /* contiguous array, request order; valid with has_children */
    uint32_t child_count;          /* valid with has_children */
    uint32_t schema_kind;          /* written by the high-to-low walkers */
    uint8_t : 2;                   /* the flag byte of schema_kind */
    uint8_t schema_kind_set : 1;   /*   value 4 */
    uint8_t : 5;
    uint8_t is_key;         /* a byte, 0 or 1 */
    uint32_t node_type;     /* valid with typed_node */
    uint32_t : 1;           /* the flag word */
    uint32_t has_value : 1; /*   2 */
    uint32_t : 2;
    uint32_t op_explicit : 1; /*   16 */
    uint32_t : 1;
    uint32_t has_children : 1; /*   64 */
    uint32_t : 2;
    uint32_t key_seen : 1; /*   0x200 */
    uint32_t : 22;
    uint8_t : 1;           /* the second flag byte */
    uint8_t added_key : 1; /*   2 */
    uint8_t : 1;
    uint8_t typed_node : 1;   /*   8 */
    uint8_t has_value_ns : 1; /*   16 */
    uint8_t : 3;
    void *framework;
};

/* Request record. */
struct zmf_request {
    uint32_t op_type;
    uint8_t scope_flags_1;  /* mask 0x0f */
    uint8_t scope_flags_2;  /* mask 0x03 */
    uint8_t scope_flags_3;  /* mask 0x03 */
    uint8_t scope_flags_4;  /* mask 0x07 */
    uint32_t scope_flags_5; /* mask 0x3ffff */
    uint8_t scope_flags_6;  /* mask 0x03 */
    uint32_t scope_word;    /* the gate can only be shut when this is 2 */
    uint8_t scope_flags_7;  /* mask 0x0f */
    uint8_t scope_flags_8;  /* mask 0x07 */
    uint8_t scope_flags_9;  /* mask 0x01 */
    void *framework;
};
#define ZMF_SCOPE_MASK_1 0x0fu
#define ZMF_SCOPE_MASK_2 0x03u
#define ZMF_SCOPE_MASK_3 0x03u
#define ZMF_SCOPE_MASK_4 0x07u
#define ZMF_SCOPE_MASK_5 0x3ffffu
#define ZMF_SCOPE_MASK_6 0x03u
#define ZMF_SCOPE_MASK_7 0x0fu
#define ZMF_SCOPE_MASK_8 0x07u
#define ZMF_SCOPE_MASK_9 0x01u

/* Request context. */
#define ZMF_COMPONENT_NAME_SIZE 201 /* 200 characters and the terminator */

struct zmf_list_cursor { /* framework state; the plug-in only passes its address */
    void *opaque[4];
};

struct zmf_req_ctx {
    struct zmf_request *request;
    char *err_msg; /* owned: zmf_strdup / kvo_named_free */
    uint32_t pass_flags;
    uint8_t output_list_depth;
    struct zmf_list_cursor list_cursor;
    char component_name[ZMF_COMPONENT_NAME_SIZE];
    int32_t logical_index;
    uint32_t delete_walk;
    uint32_t walk_all;
    uint32_t filter_bits;
    char *err_info; /* owned, as err_msg */
    uint32_t replace_armed;
    void *framework;
};

/* Context handle. */
struct zmf_log_state { /* log control state; passed by address to zmf_debug_should_log */
    uint32_t words[4];
};

struct zmf_map_ctx_rec {
    struct zmf_req_ctx *req_ctx;
    struct zmf_log_state log_state;
    void *err_log;
    void *trc_log;
    void *ring_log;
    uint32_t ring_trace_on;
    uint32_t last_key_op;
    void *framework;
};
typedef struct zmf_map_ctx_rec *zmf_map_ctx; /* the handle: `rcode f(zmf_map_ctx, ...)`, asserted "NULL != ctx" */

/* Xpath record. */
struct zmf_map_xpath_op {
    struct zmf_datatree *tree;
    struct zmf_datatree *found_node; /* filled for kind 2, also when the status is RC_LEAF_EXISTS */
    uint32_t operation;              /* always 1 */
    uint32_t kind;                   /* 2 list entry, 3 leaf */
    char value[300];                 /* sizes in bytes, terminator included */
    char ns[250];
    char xpath[1000];
    char list_path[1000];
};

/* Shapes. */
typedef rcode (*zmf_node_fn)(zmf_map_ctx, const struct zmf_datatree *, struct zmf_datatree *);
typedef rcode (*zmf_cont_fn)(zmf_map_ctx, const struct zmf_datatree *, unsigned int, struct zmf_datatree *);
typedef const char *(*zmf_value_fn)(zmf_map_ctx, const struct zmf_datatree *, struct zmf_datatree *);
typedef rcode (*zmf_itree_fn)(zmf_map_ctx, struct zmf_datatree *entry, struct zmf_datatree *output, unsigned int zero);

/* The same as function types, to declare with: extern zmf_node_shape oc_optical_rate_class_to_low; */
typedef rcode zmf_node_shape(zmf_map_ctx, const struct zmf_datatree *, struct zmf_datatree *);
typedef rcode zmf_cont_shape(zmf_map_ctx, const struct zmf_datatree *, unsigned int, struct zmf_datatree *);
typedef const char *zmf_value_shape(zmf_map_ctx, const struct zmf_datatree *, struct zmf_datatree *);

struct zmf_itree_frame {
    struct zmf_datatree *nodes; /* contiguous array; for a frame of a list callback each node is one entry */
    uint32_t count;
    zmf_itree_fn fn; /* may be null */
};

/* Framework: tree building. */
rcode zmf_map_datatree_add_path_flagged(zmf_map_ctx ctx, struct zmf_datatree *tree, const char *path, const char *ns,
                                        const char *value, const struct zmf_datatree *source,
                                        struct zmf_datatree **node_out, unsigned int list_flag,
                                        unsigned int cross_module_flag);
rcode zmf_map_datatree_update_namespace(zmf_map_ctx ctx, struct zmf_datatree *tree, const char *path, const char *ns,
                                        unsigned int one);
rcode zmf_map_search_or_add_list(zmf_map_ctx ctx, struct zmf_datatree *tree, struct zmf_list_cursor *cursor,
                                 const char *list_path, const char *key_value, const char *key_name, const char *ns);
rcode zmf_map_search_list(zmf_map_ctx ctx, struct zmf_datatree *tree, struct zmf_datatree **entry_out,
                          const char *list_path, const char *key_value, const char *key_name, const char *ns);
rcode zmf_map_tree_xpath_operations(zmf_map_ctx ctx, struct zmf_map_xpath_op *op);
rcode zmf_map_stitch_list_to_list(zmf_map_ctx ctx, struct zmf_map_xpath_op *op);

/* Framework: walk position. */
void zmf_map_add_to_node_hierarchy(zmf_map_ctx ctx, const struct zmf_datatree *node, unsigned int kind);
void zmf_map_remove_from_node_hierarchy(zmf_map_ctx ctx, const struct zmf_datatree *node);
rcode zmf_map_update_current_list_node(zmf_map_ctx ctx, const char *list_path);
/* *text is borrowed (never freed by the plug-in); null and nonzero status when the entry lacks that child leaf */
rcode zmf_map_get_node_info(zmf_map_ctx ctx, const char *list_path, const char *key_name, const char **text);
void zmf_add_to_output_list_ctx(zmf_map_ctx ctx, const struct zmf_datatree *node, struct zmf_datatree *output);
void zmf_remove_from_output_list_ctx(zmf_map_ctx ctx, const struct zmf_datatree *node, struct zmf_datatree *output);
void zmf_map_util_itree_stack_push(zmf_map_ctx ctx, struct zmf_datatree *nodes, uint32_t count, zmf_itree_fn fn);
void zmf_map_util_itree_stack_pop(zmf_map_ctx ctx);
void zmf_map_util_itree_stack_peak(zmf_map_ctx ctx, struct zmf_itree_frame **frame);
uint32_t zmf_map_util_itree_stack_size(zmf_map_ctx ctx); /* only the low 16 bits are compared */

/* Framework: questions about a node. */
bool zmf_map_do_these_match(const char *a, const char *b); /* false when either is null */
bool zmf_map_is_request_delete(const struct zmf_datatree *node);
bool zmf_map_is_request_add(zmf_map_ctx ctx, const struct zmf_datatree *node);
rcode zmf_map_check_oc_leafref(zmf_map_ctx ctx, const char *list_path, const char *container, const char *key_tag,
                               const struct zmf_datatree *list_node);
rcode zmf_map_validate_data_ns(zmf_map_ctx ctx, const struct zmf_datatree *node, const char *ns, unsigned int zero);

/* Framework: error, memory, text. */
void zmf_oc_error_path(zmf_map_ctx ctx);
char *zmf_strdup(const char *text, const char *memory_tag);
void kvo_named_free(void *text);
rcode zmf_strcpy_s(const char *caller, char *dest, size_t max, const char *src);
rcode zmf_strncpy_s(const char *caller, char *dest, size_t max, const char *src, size_t len);
rcode zmf_strcat_s(const char *caller, char *dest, size_t max, const char *src);
rcode zmf_strcmp_s(const char *caller, const char *a, size_t max, const char *b, int *indicator);
/* strncpy_s, strcmp_s and memset_s come from the Safe C Library: <safeclib/safe_str_lib.h>, <safeclib/safe_mem_lib.h>.
 */

/* Tracing. */
int zmf_debug_should_log(struct zmf_log_state *state, int level); /* 0 "ERR", 3 "TRC" */
/* handle, five zeros, filter word, format, then the context and the arguments of the format */
void _kvo_dt_log_filter_adv(void *handle, int z1, int z2, int z3, int z4, int z5, uint32_t *filter_word,
                            const char *format, ...) ZMF_PRINTF(8, 9);
uint32_t ret_nc_zmf_trace_index_incr(void);
#define ZMF_RINGLOG_FLAGS UINT64_C(0x10101000000)
void _ringlog(void *ring_log, uint64_t flags, const char *line);

/* Assertions. */
#ifdef __cplusplus
#define ZMF_STATIC_ASSERT(e) static_assert(e, #e)
#else
#define ZMF_STATIC_ASSERT(e) _Static_assert(e, #e)
#endif
ZMF_STATIC_ASSERT(sizeof(void *) == 8);
ZMF_STATIC_ASSERT(offsetof(struct zmf_request, op_type) == 0);
ZMF_STATIC_ASSERT(offsetof(struct zmf_request, scope_flags_5) == 8);
ZMF_STATIC_ASSERT(offsetof(struct zmf_request, scope_word) == 16);
ZMF_STATIC_ASSERT(offsetof(struct zmf_map_xpath_op, found_node) == 8);
ZMF_STATIC_ASSERT(offsetof(struct zmf_map_xpath_op, operation) == 16);
ZMF_STATIC_ASSERT(offsetof(struct zmf_map_xpath_op, value) == 24);
ZMF_STATIC_ASSERT(offsetof(struct zmf_map_xpath_op, list_path) == 24 + 300 + 250 + 1000);
ZMF_STATIC_ASSERT(((ZMF_KEYED_KINDS >> OP_EDIT) & (ZMF_KEYED_KINDS >> OP_EDIT_CHECKED) &
                   (ZMF_KEYED_KINDS >> OP_EDIT_FULL) & 1u) == 1u);

#ifdef __cplusplus
}
#endif
#endif
