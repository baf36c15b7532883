// Requests in both forms: what tree they give, and what is refused where. A case more: a row of its table.
#include <fstream>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "request.h"
#include "schema/schema.h"

namespace {

using ocmap::format;

#define TERMINAL_DEVICE "http://openconfig.net/yang/terminal-device"
#define TRANSPORT_TYPES "http://openconfig.net/yang/transport-types"
#define NETCONF "urn:ietf:params:xml:ns:netconf:base:1.0"
#define OPERATION "\"ietf-netconf:operation\":"

constexpr const char *operation_names[] = {"merge", "replace", "2", "delete", "remove"};

std::string module_of(const char *ns) {
    const char *module = ns == nullptr ? nullptr : schema::module_of_ns(ns);
    return module != nullptr ? module : ns != nullptr ? ns : "no namespace";
}

// "config{index='5' rate-class!delete='X'@openconfig-transport-types}"; other modules than that of the root are shown.
std::string to_text(const zmf_datatree *nodes, uint32_t count) {
    std::string text;
    for (const zmf_datatree *node = nodes; node != nodes + count; ++node) {
        text += node == nodes ? "" : " ";
        const std::string module = module_of(node->ns);
        text += module == "openconfig-terminal-device" ? "" : module + ":";
        text += node->tag;
        if (node->op_explicit)
            text += std::string("!") + operation_names[node->op];
        if (node->has_value)
            text += std::string("='") + node->value + "'";
        if (node->has_value_ns)
            text += "@" + module_of(node->value_ns);
        if (node->has_children)
            text += "{" + to_text(node->children, node->child_count) + "}";
    }
    return text;
}

std::string read(const std::string &bytes, format form, bool is_read) {
    try {
        const zmf::fixed_tree tree = ocmap::read_request(bytes, form, is_read);
        return to_text(tree.tops(), tree.count());
    } catch (const ocmap::input_error &error) {
        return std::to_string(error.line) + ":" + std::to_string(error.column) + ": " + error.text;
    }
}

enum { edit = false, selection = true };

struct good_row {
    bool is_read;
    const char *xml;  // inside one channel; empty: no such form
    const char *json; // likewise
    const char *tree; // below the channel
};

constexpr good_row good_rows[] = {
    {edit, "<index>5</index> <config><index>5</index><description> a  b </description></config>",
     R"("index": 5, "config": {"index": 5, "description": " a  b "})",
     "index='5' config{index='5' description=' a  b '}"},
    // Scalars stand as they are written.
    {edit, "<config><test-signal>true</test-signal><allocation>-1.50</allocation></config>",
     R"("config": {"test-signal": true, "allocation": -1.50})", "config{test-signal='true' allocation='-1.50'}"},
    {edit, "<config><als-delay>18446744073709551615</als-delay><description>1e5</description></config>",
     R"("config": {"als-delay": 18446744073709551615, "description": 1e5})",
     "config{als-delay='18446744073709551615' description='1e5'}"},
    // Identities, by the prefix in scope; nothing else is split.
    {edit, "<config><rate-class>t:TRIB_RATE_100G</rate-class><description>t:x</description></config>",
     R"("config": {"rate-class": "openconfig-transport-types:TRIB_RATE_100G", "description": "t:x"})",
     "config{rate-class='TRIB_RATE_100G'@openconfig-transport-types description='t:x'}"},
    {selection, "<state><trib-protocol>PROT_OTN</trib-protocol></state>", R"("state": {"trib-protocol": "PROT_OTN"})",
     "state{trib-protocol='PROT_OTN'}"},
    {edit,
     "<config xmlns:t='urn:outer'><rate-class xmlns:t='urn:inner'>t:A</rate-class>"
     "<trib-protocol>t:B</trib-protocol></config><state><rate-class>t:C</rate-class></state>",
     "",
     "config{rate-class='A'@urn:inner trib-protocol='B'@urn:outer} state{rate-class='C'@openconfig-transport-types}"},
    // Operations, wherever the annotation stands.
    {edit, "<config nc:operation='replace'><index nc:operation='merge'>5</index></config><otn nc:operation='create'/>",
     R"("config": {"index": 5, "@index": {)" OPERATION R"("merge"}, "@": {)" OPERATION R"("replace"}},
        "otn": {"@": {)" OPERATION R"("create"}})",
     "config!replace{index!merge='5'} otn!merge"},
    {edit, "<config nc:operation='remove'/><description nc:operation='delete'>x</description>",
     R"("config": {"\u0040": {)" OPERATION R"("remove"}}, "@description": {)" OPERATION
     R"("delete"}, "description": "x")",
     "config!remove description!delete='x'"},
    {edit, "<config><description nc:operation='delete'/></config>",
     R"("config": {"@description": {)" OPERATION R"("delete"}})", "config{description!delete}"},
    {edit,
     "<ingress><config><physical-channel>1</physical-channel><physical-channel nc:operation='delete'>2"
     "</physical-channel></config></ingress>",
     R"("ingress": {"config": {"@physical-channel": [null, {)" OPERATION R"("delete"}], "physical-channel": [1, 2]}})",
     "ingress{config{physical-channel='1' physical-channel!delete='2'}}"},
    // Selections.
    {selection, "<config><description/></config><state/>", R"("config": {"description": null}, "state": {})",
     "config{description} state"},
    {selection, "<config>\n</config><description>\n </description><index>5</index>", "",
     "config description index='5'"},
    {selection, "", R"("ingress": {"config": {"physical-channel": null}}, "description": "")",
     "ingress{config{physical-channel}} description=''"},
    {selection, "<index>\n 5\t</index><description> a  b </description>", R"("index": 5, "description": "a  b")",
     "index='5' description='a  b'"},
    // Texts without a character, or of white space alone.
    {edit, "<config><description/></config>", R"("config": {"description": ""})", "config{description=''}"},
    {edit, "<config><description>  </description></config>", R"("config": {"description": "  "})",
     "config{description='  '}"},
    {edit, "<config><description nc:operation='remove'> </description><admin-state> </admin-state></config>", "",
     "config{description!remove admin-state}"},
    // Nodes that the model does not know, and those of other modules.
    {edit, "<bogus>1</bogus><bogus>2</bogus><more><x/></more>", R"("bogus": [1, 2], "more": [{"x": [null]}])",
     "bogus='1' bogus='2' more{x}"},
    {edit,
     "<x xmlns='urn:corvane:yang:Corvane-pmengine-oper'><index>t:1</index><config xmlns='" TERMINAL_DEVICE "'/></x>",
     R"("Corvane-pmengine-oper:x": {"index": "t:1", "openconfig-terminal-device:config": {}})",
     "Corvane-pmengine-oper:x{Corvane-pmengine-oper:index='t:1' config}"},
    {selection, "<x xmlns='urn:y'/><y xmlns=''/>", "", "urn:y:x no namespace:y"},
    // What the forms allow beside.
    {edit, "<!-- a --><?b c?><description>a<!-- b -->&amp;<![CDATA[<c>]]>&#x41;&#10;</description>",
     R"("\u0064escription": "a&<c>\u0041\n")", "description='a&<c>A\n'"},
};

TEST(request, gives_the_same_tree_in_both_forms) {
    for (const good_row &row : good_rows) {
        const std::string xml = "<terminal-device xmlns='" TERMINAL_DEVICE "' xmlns:nc='" NETCONF
                                "' xmlns:t='" TRANSPORT_TYPES "'>\n  <logical-channels>\n    <channel>" +
                                std::string(row.xml) + "</channel>\n  </logical-channels>\n</terminal-device>\n";
        const std::string json =
            R"({"openconfig-terminal-device:terminal-device": {"logical-channels": {"channel": [{)" +
            std::string(row.json) + "}]}}}";
        const std::string tree = "terminal-device{logical-channels{channel{" + std::string(row.tree) + "}}}";
        if (*row.xml != '\0') {
            EXPECT_EQ(read(xml, format::xml, row.is_read), tree);
        }
        if (*row.json != '\0') {
            EXPECT_EQ(read(json, format::json, row.is_read), tree);
        }
    }
}

TEST(request, tops_stand_in_a_wrapper_or_alone) {
    const std::string top = "<terminal-device xmlns='" TERMINAL_DEVICE "'/>";
    const std::string filter = "<nc:filter xmlns:nc='" NETCONF "' type='subtree'> " + top + top + " </nc:filter>";
    EXPECT_EQ(read("\xef\xbb\xbf<?xml version='1.0' encoding='utf-8'?>\n" + top, format::xml, selection),
              "terminal-device");
    EXPECT_EQ(read(filter, format::xml, selection), "terminal-device terminal-device");
    EXPECT_EQ(read("\xef\xbb\xbf {\"openconfig-terminal-device:terminal-device\": {}} ", format::json, selection),
              "terminal-device");
}

// Rows that begin with "+" stand on the second line, below the root.
struct bad_row {
    format form;
    bool is_read;
    std::string text;
    const char *place;
    const char *words;
};

const bad_row bad_xml[] = {
    // Malformed.
    {format::xml, edit, "", "1:1", "empty"},
    {format::xml, edit, "+<a>", "2:4", "Premature end"},
    {format::xml, edit, "+<a></b>", "2:4", "tag mismatch"},
    {format::xml, edit, "+</terminal-device>\n <b/>", "3:2", "Extra content"},
    {format::xml, edit, "+<x:a/>", "2:1", "prefix x on a is not defined"},
    {format::xml, edit, "+<a x:b=''/>", "2:1", "prefix x for b on a is not defined"},
    {format::xml, edit, "+ <a b='1' b='2'/>", "2:2", "Attribute b redefined"},
    {format::xml, edit, "+<a xmlns='b'/>", "2:1", "URI b is not absolute"},
    {format::xml, edit, "+<a>&b;</a>", "2:7", "Entity 'b' not defined"},
    {format::xml, edit, "<!DOCTYPE a [<!ENTITY b 'c'>]><a/>", "1:1", "document type"},
    {format::xml, edit, "\n  <!DOCTYPE a SYSTEM 'b'><a/>", "2:3", "document type"},
    {format::xml, edit, "<?xml version='1.0' encoding='ISO-8859-1'?><a/>", "1:1", "ISO-8859-1"},
    // Bytes.
    {format::xml, edit, "+<a>\xc3\xa9\xff", "2:5", "not UTF-8"},
    {format::xml, edit, "+\xc0\x80", "2:1", "not UTF-8"},
    {format::xml, edit, "+\xed\xa0\x80", "2:1", "not UTF-8"},
    {format::xml, edit, "+\xf4\x90\x80\x80", "2:1", "not UTF-8"},
    {format::xml, edit, "+\xe2\x82", "2:1", "not UTF-8"},
    {format::xml, edit, std::string("+<a>\0</a>", 9), "2:4", "zero byte"},
    // What the models and the protocol do not allow.
    {format::xml, edit, "<a/>", "1:1", "unknown top node \"a\" without a namespace"},
    {format::xml, edit, "<a xmlns='urn:b'/>", "1:1", "unknown top node \"a\" of namespace \"urn:b\""},
    {format::xml, edit, "<terminal-device/>", "1:1", "unknown top node"},
    {format::xml, edit, "<optical-channel xmlns='" TERMINAL_DEVICE "'/>", "1:1", "unknown top node"},
    {format::xml, selection, "<filter xmlns='" NETCONF "'>\n<filter/>", "2:1", "unknown top node \"filter\""},
    {format::xml, selection, "<filter xmlns='" NETCONF "'/>", "1:1", "without a node"},
    {format::xml, selection, "<filter xmlns='" NETCONF "' type='xpath'/>", "1:1", "filter of type \"xpath\""},
    {format::xml, edit, "<config xmlns='" NETCONF "' type='subtree'/>", "1:1", "unknown attribute \"type\""},
    {format::xml, edit, "<config xmlns='" NETCONF "'>\nx</config>", "2:1", "text beside"},
    {format::xml, edit, "+<a b='1'/>", "2:1", "unknown attribute \"b\""},
    {format::xml, edit, "+<a operation='merge'/>", "2:1", "not of the NETCONF base"},
    {format::xml, edit, "+<a nc:operation='none'/>", "2:1", "unknown operation \"none\""},
    {format::xml, selection, "+<a nc:operation='merge'/>", "2:1", "operation in a read"},
    {format::xml, edit, "+<a>x<b/></a>", "2:4", "text beside"},
    {format::xml, edit, "+<a><b/> x</a>", "2:9", "text beside"},
    {format::xml, edit, "+<logical-channels> x</logical-channels>", "2:20", "holds nodes, and no text"},
    {format::xml, edit, "+<logical-channels><channel><index><a/>", "2:35", "leaf \"index\" holds node \"a\""},
    {format::xml, edit, "+<logical-channels><channel><config><rate-class> x:Y</rate-class>", "2:49",
     "prefix \" x\" is not declared"},
};

const bad_row bad_json[] = {
    // Malformed.
    {format::json, edit, "", "1:1", "unexpected end"},
    {format::json, edit, "+\"a\"}", "2:4", "unexpected '}'"},
    {format::json, edit, "+\"a\":nul}}", "2:8", "invalid literal"},
    {format::json, edit, "+\"a\":\"\x01\"}}", "2:6", "control character"},
    {format::json, edit, "+\"a\":\"\\ud800\"}}", "2:12", "surrogate"},
    {format::json, edit, "+\"a\":\"x", "2:6", "missing closing quote"},
    {format::json, edit, "+\"a\":/**/1}}", "2:5", "invalid literal"},
    {format::json, edit, "+}} {", "2:4", "expected end of input"},
    {format::json, edit, "+\"a\":1, \"a\":2}}", "2:8", "member \"a\" stands twice"},
    {format::json, edit, "+\"a\":{\"a\":1}, \"\\u0061\":2}}", "2:14", "member \"a\" stands twice"},
    {format::json, edit, "+\"a\":[1,-1e999]}}", "2:8", "number -1e999 does not fit"},
    {format::json, edit, "+\"a\":18446744073709551616}}", "2:5", "number 18446744073709551616 does not fit"},
    {format::json, edit, "+\"a\":-9223372036854775809}}", "2:5", "does not fit"},
    {format::json, edit, "+\"\xc3\xa9\xff\"", "2:3", "not UTF-8"},
    {format::json, edit, std::string("+\"a\0", 4), "2:3", "zero byte"},
    {format::json, edit, "+\"a\":\"\\u0000\"}}", "2:5", "zero character"},
    // Names.
    {format::json, edit, "{}", "1:1", "without a node"},
    {format::json, edit, "[1]", "1:1", "a request is an object"},
    {format::json, edit, " 1", "1:2", "a request is an object"},
    {format::json, edit, "{ \"terminal-device\": {}}", "1:3", "lacks the name of its module"},
    {format::json, edit, "{\"openconfig-platform:component\": {}}", "1:2", "unknown top node \"component\""},
    {format::json, edit, "+\"b:a\":1}}", "2:1", "unknown module \"b\""},
    {format::json, edit, "+\"a/b\":1}}", "2:1", "no name of a node"},
    {format::json, edit, "+\"\":1}}", "2:1", "no name of a node"},
    {format::json, edit, "+\"logical-channels\":{},\"openconfig-terminal-device:logical-channels\":{}}}", "2:23",
     "under another name"},
    // Shapes.
    {format::json, edit, "+\"logical-channels\":[]}}", "2:20", "takes no array"},
    {format::json, edit, "+\"logical-channels\":1}}", "2:20", "takes an object"},
    {format::json, selection, "+\"logical-channels\":null}}", "2:20", "takes an object"},
    {format::json, edit, "+\"logical-channels\":{\"channel\":{}}}}", "2:31", "takes an array of objects"},
    {format::json, edit, "+\"logical-channels\":{\"channel\":[1]}}}", "2:32", "takes an array of objects"},
    {format::json, edit, "+\"logical-channels\":{\"channel\":[{\"index\":{}}]}}}", "2:41", "takes no object"},
    {format::json, edit, "+\"logical-channels\":{\"channel\":[{\"index\":[1]}]}}}", "2:41", "takes no array"},
    {format::json, edit, "+\"logical-channels\":{\"channel\":[{\"ingress\":{\"config\":{\"physical-channel\":1}}}]}}}",
     "2:73", "takes an array"},
    {format::json, edit,
     "+\"logical-channels\":{\"channel\":[{\"ingress\":{\"config\":{\"physical-channel\":[null]}}}]}}}", "2:74",
     "not of the empty type"},
    {format::json, edit, "+\"a\":[[1]]}}", "2:6", "an array in an array"},
    {format::json, edit, "+\"a\":null}}", "2:5", "null in an edit"},
    {format::json, edit, "+\"a\":[1,null]}}", "2:8", "null beside another"},
    {format::json, edit, "+\"a\":[null,1]}}", "2:11", "null beside another"},
    {format::json, selection, "+\"a\":[]}}", "2:5", "selects nothing"},
    {format::json, edit, "+\"logical-channels\":{\"channel\":[{\"config\":{\"rate-class\":\"x:Y\"}}]}}}", "2:56",
     "unknown module \"x\""},
    // Annotations.
    {format::json, selection, "+\"@\":{}}}", "2:1", "operation in a read"},
    {format::json, edit, "{\"@\":{}}", "1:2", "operation on the request itself"},
    {format::json, edit, "+\"@\":{\"x\":1}}}", "2:6", "unknown annotation \"x\""},
    {format::json, edit, "+\"@\":[]}}", "2:5", "no object with an operation"},
    {format::json, edit, "+\"@a\":1}}", "2:6", "no object with an operation"},
    {format::json, edit, "+\"@\":{" OPERATION "\"none\"}}}", "2:31", "unknown operation \"none\""},
    {format::json, edit, "+\"@a\":{" OPERATION "\"merge\"}}}", "2:32", "annotation \"@a\" of what is not there"},
    {format::json, edit, "+\"a\":[1],\"@a\":[null,{" OPERATION "\"delete\"}]}}", "2:46", "of what is not there"},
    {format::json, edit, "+\"a\":{},\"@a\":{" OPERATION "\"delete\"}}}", "2:39", "stands beside it"},
    {format::json, edit, "+\"@config\":{" OPERATION "\"delete\"}}}", "2:37", "takes its operation inside"},
};

void expect_refused(const bad_row &row) {
    std::string text = row.text;
    if (text.starts_with('+'))
        text = (row.form == format::xml ? "<terminal-device xmlns='" TERMINAL_DEVICE "' xmlns:nc='" NETCONF "'>\n"
                                        : "{\"openconfig-terminal-device:terminal-device\": {\n") +
               text.substr(1);
    const std::string said = read(text, row.form, row.is_read);
    EXPECT_EQ(said.substr(0, said.find(": ")), row.place) << text << "\n" << said;
    EXPECT_NE(said.find(row.words), std::string::npos) << text << "\n" << said;
}

TEST(request, refuses_with_place_and_reason) {
    for (const bad_row &row : bad_xml)
        expect_refused(row);
    for (const bad_row &row : bad_json)
        expect_refused(row);
}

std::string repeated(const std::string &piece, size_t count) {
    std::string text;
    text.reserve(piece.size() * count);
    for (size_t i = 0; i < count; ++i)
        text += piece;
    return text;
}

// 63 nodes below the root is as deep as it goes; JSON counts the request itself besides.
TEST(request, is_refused_beyond_its_limits) {
    const std::string xml_top = "<terminal-device xmlns='" TERMINAL_DEVICE "'>\n";
    const std::string json_top = "{\"openconfig-terminal-device:terminal-device\":\n";
    EXPECT_EQ(read(xml_top + repeated("<a>", 63) + repeated("</a>", 63) + "</terminal-device>", format::xml, edit),
              "terminal-device{" + repeated("a{", 62) + "a" + repeated("}", 63));
    EXPECT_EQ(read(xml_top + repeated("<a>", 64), format::xml, edit), "2:190: nesting deeper than 64");
    EXPECT_EQ(read(json_top + repeated("{\"a\":", 62) + "{}" + repeated("}", 63), format::json, edit),
              "terminal-device{" + repeated("a{", 61) + "a" + repeated("}", 62));
    EXPECT_EQ(read(json_top + repeated("{\"a\":", 64), format::json, edit), "2:316: nesting deeper than 64");

    const std::string most = xml_top + repeated("<a/>", 999999);
    EXPECT_EQ(ocmap::read_request(most + "</terminal-device>", format::xml, edit).nodes(), 1000000u);
    EXPECT_EQ(read(most + "\n<a/></terminal-device>", format::xml, edit), "3:1: more than 1000000 nodes");

    std::string names;
    for (size_t i = 0; i < 100001; ++i)
        names += "<a" + std::to_string(i) + "/>";
    EXPECT_NE(read(xml_top + names + "</terminal-device>", format::xml, edit).find("more than 100000 different names"),
              std::string::npos);
    const std::string bindings = "<a " + repeated("xmlns:b='urn:c' ", 100);
    EXPECT_EQ(read(xml_top + " <!-- <a '' --> " + bindings + "b=''/>", format::xml, edit),
              "2:17: more than 100 attributes");
    EXPECT_EQ(read(xml_top + bindings + "/>", format::xml, edit).find("more than"), std::string::npos);

    const std::string largest((size_t{64} << 20) + 1, ' ');
    EXPECT_EQ(read(largest, format::json, edit), "1:1: larger than 64 MiB");
}

std::string example(const std::string &name) {
    std::ifstream file(EXAMPLES "/" + name);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

struct example_row {
    const char *name;
    bool is_read;
    const char *channels;
};

TEST(request, examples_say_the_same_in_both_forms) {
    const example_row rows[] = {
        {"create-two-channels", edit,
         "channel{index='100' config{index='100' description='Client port to the north'}} "
         "channel{index='300' config{index='300' description='Line port to the north'}}"},
        {"read-one-channel", selection, "channel{index='300' config{description}}"},
        {"refused-index", edit, "channel{index='100001' config{index='100001' description='One too many'}}"},
        {"replace-channel", edit,
         "channel!replace{index='300' config{index='300' description='Line port to the south'}}"},
        {"delete-channel", edit, "channel!delete{index='300'}"},
    };
    for (const example_row &row : rows) {
        const std::string tree = "terminal-device{logical-channels{" + std::string(row.channels) + "}}";
        EXPECT_EQ(read(example(row.name + std::string(".xml")), format::xml, row.is_read), tree);
        EXPECT_EQ(read(example(row.name + std::string(".json")), format::json, row.is_read), tree);
    }
}

} // namespace
