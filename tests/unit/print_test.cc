// The printers of native trees, on what whole requests do not bring about.
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <unistd.h>

#include <gtest/gtest.h>

#include "print.h"
#include "zmf.h"
#include "zmf/session.h"
#include "zmf/tree.h"

namespace {

constexpr const char *cfg = "urn:corvane:yang:Corvane-terminal-device-cfg";
constexpr const char *foreign = "urn:nobody:knows:this";

class printers : public testing::Test {
protected:
    void add(const char *path, const char *ns, const char *value, const zmf_datatree *source = nullptr,
             bool is_list = false) {
        ASSERT_EQ(zmf_map_datatree_add_path_flagged(session_.context(), tree_.root(), path, ns, value, source, nullptr,
                                                    is_list, 0),
                  RC_OK);
    }

    static std::string printed(const std::function<void(ocmap::output &)> &print) {
        std::string name = testing::TempDir() + "printed-XXXXXX";
        const int descriptor = ::mkstemp(name.data());
        ocmap::output out(descriptor);
        print(out);
        out.finish();
        ::close(descriptor);
        std::ifstream file(name);
        ::unlink(name.c_str());
        return {std::istreambuf_iterator<char>(file), {}};
    }
    std::string json() {
        return printed([this](ocmap::output &out) { print_json(tree_, out); });
    }
    std::string xml(bool is_read) {
        return printed([this, is_read](ocmap::output &out) { print_xml(tree_, is_read, out); });
    }

    static zmf_datatree node_with(uint32_t op) {
        zmf_datatree node{};
        node.op = op;
        node.op_explicit = 1;
        return node;
    }

    zmf::session session_{OP_EDIT};
    zmf::output_tree tree_;
};

TEST_F(printers, an_empty_tree_is_a_document) {
    EXPECT_EQ(json(), "{\n}\n");
    EXPECT_EQ(xml(true), "<filter xmlns=\"urn:ietf:params:xml:ns:netconf:base:1.0\" type=\"subtree\"/>\n");
}

TEST_F(printers, json_gathers_entries_of_a_list_that_stand_apart) {
    const zmf_datatree replaced = node_with(OP_REPLACE), merged = node_with(OP_MERGE);
    add("/logical-channels/channel", cfg, nullptr, &replaced, true);
    add("/logical-channels/channel/channel-index", cfg, "1");
    add("/logical-channels/note", cfg, nullptr, &merged);
    add("/logical-channels/channel", cfg, nullptr, nullptr, true);
    add("/logical-channels/channel/channel-index", cfg, "2");
    add("/logical-channels/channel", cfg, nullptr, nullptr, true);
    EXPECT_EQ(json(), R"({
  "Corvane-terminal-device-cfg:logical-channels": {
    "channel": [
      {
        "@": {"ietf-netconf:operation": "replace"},
        "channel-index": "1"
      },
      {
        "channel-index": "2"
      },
      {}
    ],
    "note": null,
    "@note": {"ietf-netconf:operation": "merge"}
  }
}
)");
    EXPECT_EQ(xml(true), R"(<filter xmlns="urn:ietf:params:xml:ns:netconf:base:1.0" type="subtree">
  <logical-channels xmlns="urn:corvane:yang:Corvane-terminal-device-cfg">
    <channel nc:operation="replace">
      <channel-index>1</channel-index>
    </channel>
    <note nc:operation="merge"/>
    <channel>
      <channel-index>2</channel-index>
    </channel>
    <channel/>
  </logical-channels>
</filter>
)");
}

TEST_F(printers, name_the_module_where_it_changes) {
    add("/logical-channels", cfg, nullptr);
    add("/logical-channels/side", foreign, nullptr);
    add("/logical-channels/side/leaf", foreign, "1");
    add("/logical-channels/own", cfg, "2");
    EXPECT_EQ(json(), R"({
  "Corvane-terminal-device-cfg:logical-channels": {
    "urn:nobody:knows:this:side": {
      "leaf": "1"
    },
    "own": "2"
  }
}
)");
    EXPECT_NE(xml(false).find("    <side xmlns=\"urn:nobody:knows:this\">\n      <leaf>1</leaf>\n    </side>\n"
                              "    <own>2</own>\n"),
              std::string::npos);
}

TEST_F(printers, keep_values_whole) {
    // A character of three bytes across the end of a piece, and more than one piece.
    const std::string value = std::string(65535, 'x') + "\u20ac" + std::string(70000, 'y');
    add("/logical-channels/note", cfg, value.c_str());
    EXPECT_NE(json().find("\"note\": \"" + value + "\""), std::string::npos);
    EXPECT_NE(xml(false).find("<note>" + value + "</note>"), std::string::npos);
}

TEST_F(printers, xml_refuses_what_it_cannot_carry) {
    add("/logical-channels/note", cfg, "tab\tand \x01");
    EXPECT_NE(json().find(R"("note": "tab\tand \u0001")"), std::string::npos);
    EXPECT_THROW(xml(false), ocmap::print_error);
}

} // namespace
