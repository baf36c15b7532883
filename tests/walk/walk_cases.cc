// Requests of the test model and the logs that their walks have to leave. To add one: a row; fake.h tells the events.
#include "run.h"

namespace {

constexpr uint32_t cfg = OP_GET_CONFIG, get = OP_GET, edit = OP_EDIT, checked = OP_EDIT_CHECKED, full = OP_EDIT_FULL;
constexpr uint32_t other_write = 5;
constexpr uint32_t write_above_16 = 17; // its low bits are those of OP_EDIT

using text = std::string;

const text no_keys = "! No keys specified with a list node.;";
const text unsupported = "! Unsupported tag is specified in the request.;";
const text key_error = "! List key node error.; err;";
const text entry_begin = "+2 entry; @ /t/entry;";
const text keyed_entry_begin = entry_begin + "leafref /t/entry config id entry;";
const text keyed_duo_begin = "+2 duo; @ /t/duo; leafref /t/duo config k1 duo; leafref /t/duo config k2 duo;";

// What a fall-through calls below a node; `n` is how the node appears in each call.
text inner_all(const text &n) {
    return "inner/0(" + n + "); x(" + n + "); ?inner(" + n + ");";
}
text box_leaves(const text &n) {
    return "a(" + n + "); b(" + n + "); tags(" + n + ");";
}
text boxstate_all(const text &n) {
    return "boxstate/0(" + n + "); s(" + n + "); ?boxstate(" + n + ");";
}
text item_all(const text &n) {
    return no_keys + "@ /t/item; item(" + n + "); no(" + n + "); ?item(" + n + ");";
}
text sub_all(const text &n) {
    return "sub/0(" + n + "); w(" + n + ");" + item_all(n) + "?sub(" + n + ");";
}
text entrystate_all(const text &n) {
    return "entrystate/0(" + n + "); up(" + n + "); ?entrystate(" + n + ");";
}
text duo_all(const text &n) {
    return no_keys + "@ /t/duo; duo(" + n + "); k1(" + n + "); k2(" + n + "); z(" + n + "); ?duo(" + n + ");";
}
text below_entry(const text &n) { // by its key, not in a get
    return "v(" + n + ");" + sub_all(n) + "?entry(" + n + ");";
}
text entry_all(const text &n) { // not in a get
    return no_keys + "@ /t/entry; entry(" + n + "); id(" + n + ");" + below_entry(n);
}

text in_top(const text &events, const text &end = "= ok", int children = 1) {
    return "+1 top; top/" + std::to_string(children) + "(top);" + events + "- top;" + end;
}
text in_box(int children, const text &events, const text &end = "= ok") {
    return in_top("+1 box; box/" + std::to_string(children) + "(box);" + events + "- box;", end);
}
text in_shelf(const text &events, const text &end = "= ok", int children = 1) {
    return in_top("+1 shelf; shelf/" + std::to_string(children) + "(shelf);" + events + "- shelf;", end);
}
text shelf(const text &list) {
    return "top{shelf{" + list + "}}";
}

void add(std::vector<walk_case> &to, const std::vector<walk_case> &cases) {
    to.insert(to.end(), cases.begin(), cases.end());
}

std::vector<walk_case> container_cases() {
    const text removed = "box !remove all";
    const text removed_in_replace = removed + " PD";
    const text box_replaced = "+1 box; box/0(box !remove PD);" + box_leaves(removed_in_replace) +
                              inner_all(removed_in_replace) + "?box(" + removed_in_replace + ");";
    const text box_deleted =
        "+1 box; box/0(box !delete);" + box_leaves(removed) + inner_all(removed) + "?box(box !delete all); - box;";
    return {
        {"merge: the named nodes, in request order", edit, "top{box{inner{x=2} a=1} name=n}",
         in_top("+1 box; box/2(box); +1 inner; inner/1(inner); x(x); - inner; a(a); - box; name(name);", "= ok", 2)},
        {"an empty container in an edit is walked alone", edit, "top{box inner}",
         in_top("+1 box; box/0(box); - box;" + unsupported + "err;", "= UNSUPPORTED_NODE msg=inner", 2)},
        {"a get of all", get, "top",
         "+1 top; top/0(top); name(top all); box/0(top all);" + box_leaves("top all") + inner_all("top all") +
             boxstate_all("top all") + "?box(top all); shelf/0(top all);" + no_keys +
             "@ /t/entry; entry(top all); id(top all); v(top all);" + sub_all("top all") + entrystate_all("top all") +
             "?entry(top all);" + duo_all("top all") +
             "?shelf(top all); meter/0(top all); m(top all); ?meter(top all); ?top(top all); - top; = ok"},
        {"a configuration read of all: no state, no meter", cfg, "top",
         "+1 top; top/0(top); name(top all); box/0(top all);" + box_leaves("top all") + inner_all("top all") +
             "?box(top all); shelf/0(top all);" + entry_all("top all") + duo_all("top all") +
             "?shelf(top all); ?top(top all); - top; = ok"},
        {"named nodes of operational data in a get", get, "top{box{state{s}} meter{m}}",
         in_top("+1 box; box/1(box); +1 state; boxstate/1(state); s(s); - state; - box; +1 meter; meter/1(meter); m(m);"
                "- meter;",
                "= ok; left f2", 2)},
        {"state in a configuration read is ignored", cfg, "top{box{state{s} b}}",
         in_box(2, unsupported + "b(b);", "= ok; left f2")},
        {"state in an edit is refused", edit, "top{box{state{s=1} b=1}}",
         in_box(2, unsupported + "err;", "= UNSUPPORTED_NODE msg=state")},
        {"meter in an edit is refused", edit, "top{meter}",
         in_top(unsupported + "err;", "= UNSUPPORTED_NODE msg=meter")},

        {"content match: all siblings, and the leaf a second time", cfg, "top{box{a=5}}",
         in_box(1, "a(a);" + box_leaves("box all f10001") + inner_all("box all f10001") + "?box(box all f10000);",
                "= ok; left f10000")},
        {"content match in a get: the first inner container ends it for the next one", get, "top{box{a=5}}",
         in_box(1,
                "a(a);" + box_leaves("box all f10001") + inner_all("box all f10001") + "boxstate/1(box all f10000);" +
                    unsupported + "?box(box all f10000);",
                "= ok; left f10000")},
        {"a selection beside a content match", cfg, "top{box{a=5 b}}",
         in_box(2, "a(a); b(b f10004);", "= ok; left f10006")},
        {"a level begins anew", cfg, "top{name box{inner{x}}}",
         in_top("name(name); +1 box; box/1(box); +1 inner; inner/1(inner); x(x); - inner; - box;", "= ok; left f2", 2)},
        {"content match beside a list: the list is handed the node with its children", cfg,
         shelf("entry{id=1 sub{w=5}}"),
         in_shelf(entry_begin +
                      "entry(entry); id(id); +1 sub; sub/1(sub); w(w); w(sub all f10001); @ /t/item;"
                      "item(sub all f10001);" +
                      unsupported + "?sub(sub all f10001); - sub; - entry;",
                  "= ok; left f10000")},
        {"content match of a list entry is taken by the container above", cfg, shelf("entry{id=7 v=3}"),
         in_shelf(entry_begin + "entry(entry); id(id); v(v); - entry; @ /t/entry; entry(shelf all f10001);" +
                      unsupported + "@ /t/duo; duo(shelf all f10001);" + unsupported + "?shelf(shelf all f10001);",
                  "= ok; left f10000")},

        {"delete of a container with children", edit, "top{box!delete{a} name=n}",
         in_top("! Delete request with subtree present; err;", "= INVALID_ARGUMENTS", 2)},
        {"remove of a container with children", other_write, "top{box!remove{a}}",
         in_top("! Delete request with subtree present; err;", "= INVALID_ARGUMENTS")},
        {"delete of an empty container", edit, "top{box!delete}", in_top(box_deleted)},
        {"an empty child array is no children", edit, "top{box!delete{}}", in_top(box_deleted)},
        {"a delete in a get: state comes after it has its operation back", get, "top{box!delete}",
         in_top("+1 box; box/0(box !delete);" + box_leaves(removed) + inner_all(removed) +
                "boxstate/0(box !delete all); s(box !remove all); ?boxstate(box !delete all); ?box(box !delete all);"
                "- box;")},
        {"delete of a container with lists below", edit, "top{shelf!delete}",
         in_top("+1 shelf; shelf/0(shelf !delete);" + entry_all("shelf !remove all dw1") +
                duo_all("shelf !remove all dw1") + "?shelf(shelf !delete all); - shelf;")},
        {"a callback's failure does not stop the fall-through and stands after it", edit, "top{box!delete name=n}",
         in_top(box_deleted, "= bad", 2), "box:bad"},
        {"failures in a fall-through are dropped", edit, "top{box!delete}", in_top(box_deleted),
         "a:bad inner:bad ?box:bad"},

        {"replace", edit, "top{box!replace{a=1} name=n}",
         in_top(box_replaced + "box/1(box !merge PA); a(a PA); - box; name(name);", "= ok", 2)},
        {"replace below a replace: the outer one does not get its operation back", edit,
         "top{box!replace{inner!replace{x=2} a=1}}",
         in_top(box_replaced +
                    "box/2(box !merge PA); +1 inner; inner/0(inner !remove PD PA); x(inner !remove all PD PA);"
                    "?inner(inner !remove all PD PA); inner/1(inner !merge PA); x(x PA); - inner; a(a); - box;",
                "= ok; left box!merge")},
        {"a failure in the delete half stops the add half", edit, "top{box!replace{a=1}}",
         in_top(box_replaced + "- box;", "= bad"), "box:bad"},
        {"a failure in the add half", edit, "top{box!replace{a=1 b=1}}",
         in_top(box_replaced + "box/2(box !merge PA); a(a PA); - box;", "= bad"), "a:ok,bad"},

        {"not mapped", edit, "top{box{a=1} name=n}", in_top("+1 box; box/1(box); - box; name(name);", "= ok", 2),
         "box:nm"},
        {"not mapped in a fall-through pops nothing", cfg, "top",
         "+1 top; top/0(top); name(top all); box/0(top all); shelf/0(top all); ?top(top all); - top; = ok",
         "box:nm shelf:nm"},
        {"not mapped in the delete half", edit, "top{box!replace{a=1}}",
         in_top("+1 box; box/0(box !remove PD); box/1(box !merge PA); a(a PA); - box;"), "box:nm,ok"},
        {"not mapped in the add half leaves the replace as it stands", edit, "top{box!replace{a=1} name=n}",
         in_top(box_replaced + "box/1(box !merge PA); - box; name(name PA);", "= ok; left PA armed box!merge", 2),
         "box:ok,nm"},
        {"a failing callback keeps the children back", edit, "top{box{a=1} name=n}",
         in_top("+1 box; box/1(box); - box;", "= bad", 2), "box:bad"},
        {"a failing leaf ends the loop; a content match is taken all the same", cfg, "top{box{a=1 zz b}}",
         in_box(3, "a(a);" + box_leaves("box all f10001") + inner_all("box all f10001") + "?box(box all f10000);",
                "= bad; left f10000"),
         "a:bad"},

        {"unknown tag: refused in any write", other_write, "top{box{zz=1 a=1}}",
         in_box(2, unsupported + "err;", "= UNSUPPORTED_NODE msg=zz")},
        {"unknown tag: ignored in a read", get, "top{box{zz b}}", in_box(2, unsupported + "b(b);", "= ok; left f2")},
        {"foreign namespace, or none: the hook", edit, "top{box{x:zz=1 _:zz a=1}}",
         in_box(3, "?box(x:zz); ?box(zz); a(a);")},
        {"a hook's failure ends the loop", edit, "top{box{x:zz=1 a=1}}", in_box(2, "?box(x:zz);", "= bad"), "?box:bad"},
        {"a foreign child with a known name is walked as own", edit, "top{box{x:a=1}}", in_box(1, "a(x:a);")},
        {"no tag", edit, "top{box{a=1 - b=1}}", in_box(3, "a(a); ! Tag name is not available!;", "= SUBTREE_ERROR")},
        {"a count without an array", edit, "top{box{?3} name=n}",
         in_top("! Failed to get subtrees!;", "= SUBTREE_ERROR", 2)},
        {"no count and no array", edit, "top{box{?0}}", in_box(0, "")},
        {"a count without has_children", edit, "top{box{#3}}", in_box(0, "")},
    };
}

std::vector<walk_case> list_cases() {
    const text deleted = "entry !remove all dw1";
    const text replaced = deleted + " PD";
    const text delete_half = keyed_entry_begin + "entry(entry !remove dw2 PD); id(id PD);";
    return {
        {"get without children", get, shelf("entry"),
         in_shelf(no_keys + entry_begin + "entry(entry); id(entry all); v(entry all);" + sub_all("entry all") +
                  entrystate_all("entry all") + "?entry(entry all); - entry;")},
        {"get by key: state in its place", get, shelf("entry{id=7}"),
         in_shelf(entry_begin + "entry(entry); id(id); push 1; v(entry all);" + entrystate_all("entry all") +
                  sub_all("entry all") + "?entry(entry all); pop; - entry;")},
        {"configuration read by key", cfg, shelf("entry{id=7}"),
         in_shelf(entry_begin + "entry(entry); id(id); push 1;" + below_entry("entry all") + "pop; - entry;")},
        {"read of key and leaf", cfg, shelf("entry{id=7 v}"),
         in_shelf(entry_begin + "entry(entry); id(id); v(v); - entry;", "= ok; left f2")},
        {"read of a leaf: the key comes with it", cfg, shelf("entry{v}"),
         in_shelf(entry_begin + "entry(entry); v(v); add id urn:test into entry; - entry;", "= ok; left f2")},
        {"read of a leaf of a list with two keys", cfg, shelf("duo{z}"),
         in_shelf("+2 duo; @ /t/duo; duo(duo); z(z); add k1 urn:test into duo; add k2 urn:test into duo; - duo;",
                  "= ok; left f2")},
        {"no key is added beside one of two", cfg, shelf("duo{z k2}"),
         in_shelf("+2 duo; @ /t/duo; duo(duo); z(z); k2(k2 f2); - duo;", "= ok; left f2")},
        {"a foreign child counts as a child, and the key comes", get, shelf("entry{x:zz}"),
         in_shelf(entry_begin + "entry(entry); ?entry(x:zz); add id urn:test into entry; - entry;")},
        {"a child that is not walked counts all the same", get, shelf("entry{id=7 x:zz}"),
         in_shelf(entry_begin + "entry(entry); id(id); ?entry(x:zz); - entry;")},
        {"no key is added in a write", other_write, shelf("entry{v=1}"),
         in_shelf(entry_begin + "entry(entry); v(v); - entry;")},
        {"no key is added after a failure", cfg, shelf("entry{v}"),
         in_shelf(entry_begin + "entry(entry); v(v); - entry;", "= bad; left f2"), "v:bad"},
        {"read of a key without value", get, shelf("entry{id}"),
         in_shelf(entry_begin + "entry(entry); id(id); - entry;")},
        {"read by one of two keys", cfg, shelf("duo{k1=1}"),
         in_shelf("+2 duo; @ /t/duo; duo(duo); k1(k1); push 1; z(duo all); ?duo(duo all); pop; - duo;")},
        {"read by two keys, one without value", cfg, shelf("duo{k1=1 k2}"),
         in_shelf("+2 duo; @ /t/duo; duo(duo); k1(k1); k2(k2); - duo;")},
        {"read of two entries", cfg, shelf("duo{k1=1} duo{k1=2}"),
         in_shelf("+2 duo; @ /t/duo; duo(duo); k1(k1); push 1; z(duo all); ?duo(duo all); pop; - duo;"
                  "+2 duo; @ /t/duo; duo(duo); k1(k1); push 1; z(duo all); ?duo(duo all); pop; - duo;",
                  "= ok", 2)},

        {"merge", edit, shelf("entry{id=7 v=1}"), in_shelf(keyed_entry_begin + "entry(entry); id(id); v(v); - entry;")},
        {"merge of the key alone is no fall-through", full, shelf("entry{id=7}"),
         in_shelf(keyed_entry_begin + "entry(entry); id(id); - entry;")},
        {"the key need not stand first", checked, shelf("entry{v=1 id=7}"),
         in_shelf(keyed_entry_begin + "entry(entry); v(v); id(id); - entry;")},
        {"a list in a list entry", edit, shelf("entry{id=7 sub{item{no=1}}}"),
         in_shelf(keyed_entry_begin + "entry(entry); id(id); +1 sub; sub/1(sub); +2 item; @ /t/item;"
                                      "leafref /t/item config no item; item(item); no(no); - item; - sub; - entry;")},
        {"replace", edit, shelf("entry!replace{id=7 v=1 sub{w=2}}"),
         in_shelf(delete_half + "push 3;" + below_entry(replaced) +
                  "pop; entry(entry !merge); id(id); v(v); +1 sub; sub/1(sub); w(w); - sub; - entry;")},
        {"replace below a replaced entry", edit, shelf("entry!replace{id=7 sub!replace{w=2}}"),
         in_shelf(delete_half + "push 2;" + below_entry(replaced) +
                      "pop; entry(entry !merge); id(id); +1 sub; sub/0(sub !remove PD); w(sub !remove all PD);" +
                      item_all("sub !remove all dw1 PD") +
                      "?sub(sub !remove all PD); sub/1(sub !merge PA); w(w PA); - sub; - entry;",
                  "= ok; left entry!merge")},
        {"replace: what is below is looked at in the add half only", edit, shelf("entry!replace{id=7 zz=1 x:zz}"),
         in_shelf(delete_half + "push 3;" + below_entry(replaced) + "pop; entry(entry !merge); id(id);" + unsupported +
                      "err; - entry;",
                  "= UNSUPPORTED_NODE msg=zz")},
        {"replace with a child without tag", edit, shelf("entry!replace{id=7 -}"),
         in_shelf(delete_half + "! Tag name is not available!; - entry;", "= SUBTREE_ERROR")},
        {"replace: a failing key stops it", edit, shelf("entry!replace{id=7 v=1}"),
         in_shelf(delete_half + "- entry;", "= bad"), "id:bad"},
        {"replace: a subtree not mapped in the delete half", edit, shelf("entry!replace{id=7}"),
         in_shelf(delete_half + "push 1; v(" + replaced + "); sub/0(" + replaced + "); ?entry(" + replaced +
                  "); pop; entry(entry !merge); id(id); - entry;"),
         "sub:nm"},
        {"delete by key", edit, shelf("entry!delete{id=7}"),
         in_shelf(keyed_entry_begin + "entry(entry !delete dw2); id(id); push 1;" + below_entry(deleted) +
                  "pop; - entry;")},
        {"remove by key, failures below", full, shelf("entry!remove{id=7}"),
         in_shelf(keyed_entry_begin + "entry(entry !remove dw2); id(id); push 1;" + below_entry(deleted) +
                  "pop; - entry;"),
         "v:bad no:bad ?entry:bad"},
        {"delete by two keys", edit, shelf("duo!delete{k1=1 k2=2}"),
         in_shelf(keyed_duo_begin + "duo(duo !delete dw2); k1(k1); k2(k2); push 2; z(duo !remove all dw1);"
                                    "?duo(duo !remove all dw1); pop; - duo;")},
        {"delete with children: they have their own operations", edit, shelf("entry!delete{id=7 v=1 sub!delete}"),
         in_shelf(keyed_entry_begin +
                  "entry(entry !delete); id(id); v(v); +1 sub; sub/0(sub !delete);"
                  "w(sub !remove all);" +
                  item_all("sub !remove all dw1") + "?sub(sub !delete all); - sub; - entry;")},
        {"delete without keys where none are required", other_write, shelf("entry!delete"),
         in_shelf(no_keys + entry_begin + "entry(entry !delete); id(" + deleted + "); v(" + deleted + ");" +
                  sub_all(deleted) + "?entry(entry !delete all dw1); - entry;")},

        {"delete in a get: state comes after it has its operation back", get, shelf("entry!delete"),
         in_shelf(no_keys + entry_begin + "entry(entry !delete); id(" + deleted + "); v(" + deleted + ");" +
                  sub_all(deleted) +
                  "entrystate/0(entry !delete all dw1); up(entry !remove all dw1); ?entrystate(entry !delete all dw1);"
                  "?entry(entry !delete all dw1); - entry;")},
        {"delete by a key without value", other_write, shelf("entry!delete{id}"),
         in_shelf(entry_begin + "entry(entry !delete dw2); id(id); - entry;")},

        {"no children", edit, shelf("entry"), in_shelf(no_keys + no_keys, "= SUBTREE_ERROR")},
        {"delete without children", full, shelf("entry!delete"), in_shelf(no_keys + no_keys, "= SUBTREE_ERROR")},
        {"no children, where keys are not required", other_write, shelf("entry"),
         in_shelf(no_keys + entry_begin + "entry(entry); - entry;")},
        {"a kind of many bits requires no keys", write_above_16, shelf("entry{v=1}"),
         in_shelf(entry_begin + "entry(entry); v(v); - entry;")},
        {"no key", checked, shelf("entry{v=1}"),
         in_shelf(entry_begin + key_error + "- entry;", "= LIST_KEY_ERROR msg=id")},
        {"two key nodes in an edit", edit, shelf("entry{id=1 id=2}"),
         in_shelf(keyed_entry_begin + "leafref /t/entry config id entry;" + key_error + "- entry;",
                  "= LIST_KEY_ERROR msg=id")},
        {"two key nodes in a read", get, shelf("entry{id=1 id=2}"),
         in_shelf(entry_begin + key_error + "- entry;", "= LIST_KEY_ERROR msg=id")},
        {"two key nodes in another write", other_write, shelf("entry{id=1 id=2}"),
         in_shelf(entry_begin + key_error + "- entry;", "= LIST_KEY_ERROR msg=id")},
        {"a key without value", edit, shelf("entry{id}"),
         in_shelf(keyed_entry_begin + key_error + "- entry;", "= LIST_KEY_ERROR msg=id")},
        {"one of two keys without value", edit, shelf("duo{k1=1 k2 z=1}"),
         in_shelf(keyed_duo_begin + "duo(duo); k1(k1); ! Empty list key specified.; err; - duo;",
                  "= LIST_KEY_ERROR msg=k2")},
        {"one of two keys missing is not counted", edit, shelf("duo{k2=1}"),
         in_shelf("+2 duo; @ /t/duo; leafref /t/duo config k2 duo; duo(duo); k2(k2); - duo;")},
        {"a deleted key", edit, shelf("entry{id!delete=7 v=1}"),
         in_shelf(keyed_entry_begin + "entry(entry); ! The key node should not have delete operation.; err; - entry;",
                  "= KEY_DELETE")},
        {"key and its leaf differ", edit, shelf("entry{id=7 v=1}"),
         in_shelf(keyed_entry_begin + "! leafref value check fail; - entry;", "= bad"), "leafref:bad"},
        {"the entry cannot be made current", edit, shelf("entry{id=7}"), in_shelf(entry_begin + "- entry;", "= bad"),
         "@:bad"},
        {"unknown tag in an entry", edit, shelf("entry{id=7 zz=1 v=1}"),
         in_shelf(keyed_entry_begin + "entry(entry); id(id);" + unsupported + "err; - entry;",
                  "= UNSUPPORTED_NODE msg=zz")},
        {"state of an entry in an edit", edit, shelf("entry{id=7 state{up=1}}"),
         in_shelf(keyed_entry_begin + "entry(entry); id(id);" + unsupported + "err; - entry;",
                  "= UNSUPPORTED_NODE msg=state")},
        {"a count without an array", get, shelf("entry{?2}"),
         in_shelf("! Failed to get subtrees!;", "= SUBTREE_ERROR")},

        {"a callback's failure: no children, no fall-through", edit, shelf("entry!delete{id=7}"),
         in_shelf(keyed_entry_begin + "entry(entry !delete dw2); - entry;", "= bad"), "entry:bad"},
        {"an entry that is not mapped is left out", edit, shelf("entry{id=1 v=1} entry{id=2}"),
         in_shelf(keyed_entry_begin + "entry(entry); - entry;" + keyed_entry_begin + "entry(entry); id(id); - entry;",
                  "= ok", 2),
         "entry:nm,ok"},
        {"a read of an entry that is not mapped: no key is added", cfg, shelf("entry{v}"),
         in_shelf(entry_begin + "entry(entry); - entry;"), "entry:nm"},
        {"not mapped in the delete half", edit, shelf("entry!replace{id=7 v=1}"),
         in_shelf(keyed_entry_begin + "entry(entry !remove dw2 PD); entry(entry !merge); id(id); v(v); - entry;"),
         "entry:nm,ok"},
        {"not mapped in the add half", edit, shelf("entry!replace{id=7 v=1}"),
         in_shelf(delete_half + "push 2;" + below_entry(replaced) + "pop; entry(entry !merge); - entry;"),
         "entry:ok,nm"},
        {"not mapped in a fall-through", edit, "top{shelf!delete}",
         in_top("+1 shelf; shelf/0(shelf !delete);" + no_keys + "@ /t/entry; entry(shelf !remove all dw1);" +
                duo_all("shelf !remove all dw1") + "?shelf(shelf !delete all); - shelf;"),
         "entry:nm"},
    };
}

std::vector<walk_case> frame_cases() {
    const text two = "entry{id=1 v} entry{id=2 v=3}";
    const text removed_entry = "entry !remove all dw1 PD";
    const text removed_below_entry = below_entry(removed_entry);
    return {
        {"entries in place of the node", cfg, shelf("entry"),
         in_shelf(no_keys + entry_begin +
                      "entry(entry); id(id); v(v); +2 entry; @ /t/entry; id(id f2); v(v f2); - entry; pop; - entry;",
                  "= ok; left f10006"),
         "entry:frame", two},
        {"each entry falls through by itself", cfg, shelf("duo{k1=1 z}"),
         in_shelf("+2 duo; @ /t/duo; duo(duo); k1(duo all); k2(duo all); z(duo all); ?duo(duo all);"
                  "+2 duo; @ /t/duo; k2(k2); push 1; z(duo all); ?duo(duo all); pop; - duo;"
                  "+2 duo; @ /t/duo; k1(k1); k2(k2); - duo; pop; - duo;"),
         "duo:frame", "duo duo{k2=5} duo{k1=1 k2}"},
        {"a delete by keys goes for the entries", edit, shelf("duo!delete{k1=1 k2=2}"),
         in_shelf(keyed_duo_begin + "duo(duo !delete dw2); k1(k1); push 1; z(duo !remove all dw1);"
                                    "?duo(duo !remove all dw1); pop; pop; - duo;"),
         "duo:frame", "duo{k1=5}"},
        {"the frame's function comes first", edit, shelf("entry!delete{id=7}"),
         in_shelf(keyed_entry_begin + "entry(entry !delete dw2); fn(entry !remove); id(id); v(v); +2 entry; @ /t/entry;"
                                      "fn(entry !remove); id(id); v(v); - entry; pop; - entry;"),
         "entry:frame+fn", "entry{id=1 v=1} entry{id=2 v=1}"},
        {"the frame's function fails", edit, shelf("entry{id=7}"),
         in_shelf(keyed_entry_begin + "entry(entry); fn(entry); id(id); +2 entry; @ /t/entry; fn(entry); - entry; pop;"
                                      "- entry;",
                  "= bad"),
         "entry:frame+fn fn:ok,bad", "entry{id=1} entry{id=2} entry{id=3}"},
        {"a later entry cannot be made current", edit, shelf("entry{id=7}"),
         in_shelf(keyed_entry_begin + "entry(entry); id(id); +2 entry; @ /t/entry; - entry; pop; - entry;", "= bad"),
         "entry:frame @:ok,bad", "entry{id=1} entry{id=2}"},
        {"each half of a replace walks and gives back its own entries", edit, shelf("entry!replace{id=7}"),
         in_shelf(keyed_entry_begin + "entry(entry !remove dw2 PD); fn(entry !remove PD); id(id PD); push 2;" +
                  removed_below_entry + "pop; pop; entry(entry !merge); fn(entry); id(id); v(v); pop; - entry;"),
         "entry:frame+fn,frame+fn", "entry{id=1 v=1}"},
        {"entries of the delete half are not those of the other", edit, shelf("entry!replace{id=7 v=2}"),
         in_shelf(keyed_entry_begin + "entry(entry !remove dw2 PD); id(id PD); push 2;" + removed_below_entry +
                  "pop; pop; entry(entry !merge); id(id); v(v); - entry;"),
         "entry:frame,ok", "entry{id=1 v=1}"},
        {"an entry with a count and no array", edit, shelf("entry{id=7}"),
         in_shelf(keyed_entry_begin + "entry(entry); ! Failed to get subtrees!; pop; - entry;", "= SUBTREE_ERROR"),
         "entry:frame", "entry{?2} entry{id=2}"},
        {"the callback fails and has made a frame", edit, shelf("entry{id=7}"),
         in_shelf(keyed_entry_begin + "entry(entry); pop; - entry;", "= bad"), "entry:frame+bad", "entry{id=1}"},
        {"a frame without array holds no entry and stays", get, shelf("entry{id=7}"),
         in_shelf(entry_begin + "entry(entry); - entry;", "= ok; left frames=1"), "entry:null-frame"},
    };
}

std::vector<walk_case> augment_cases() {
    const text extra_in_read = "+1 extra; extra/0(extra); e(extra all); ?extra(extra all); - extra;";
    const text no_tag = "! Tag name is not available!; = SUBTREE_ERROR";
    return {
        {"augment: edit", edit, "extra{e=1}", "+1 extra; extra/1(extra); e(e); - extra; = ok"},
        {"augment: an empty node in an edit is walked once", edit, "extra", "+1 extra; extra/0(extra); - extra; = ok"},
        {"augment: an empty node in a read is walked twice", get, "extra",
         extra_in_read + extra_in_read + "?host(extra); = ok"},
        {"augment: delete", edit, "extra!delete",
         "+1 extra; extra/0(extra !delete); e(extra !remove all); ?extra(extra !delete all); - extra;"
         "+1 extra; extra/0(extra !remove); e(extra !remove all); ?extra(extra !remove all); - extra;"
         "?host(extra !delete); = ok"},
        {"augment: the augmented node itself", cfg, "x:host",
         "?host(x:host); +1 host; extra/0(x:host); e(x:host all); ?extra(x:host all); - host; ?host(x:host); = ok"},
        {"augment: a failure skips the second walk", get, "extra", extra_in_read + "= bad", "extra:bad"},
        {"augment: failures of the second walk are dropped", get, "extra",
         extra_in_read + extra_in_read + "?host(extra); = ok", "extra:ok,bad ?host:bad"},
        {"augment: foreign tag", edit, "x:zz=1", "?host(x:zz); = bad", "?host:bad"},
        {"augment: unknown tag in an edit", edit, "zz=1", unsupported + "err; = UNSUPPORTED_NODE msg=zz"},
        {"augment: unknown tag in a read", get, "zz{y}", unsupported + "= ok"},
        {"augment: no tag in an edit", edit, "-", no_tag},
        {"augment: no tag in a read", get, "-", no_tag},
    };
}

} // namespace

const std::vector<walk_case> &walk_cases() {
    static const std::vector<walk_case> all = [] {
        std::vector<walk_case> cases;
        add(cases, container_cases());
        add(cases, list_cases());
        add(cases, frame_cases());
        add(cases, augment_cases());
        return cases;
    }();
    return all;
}
