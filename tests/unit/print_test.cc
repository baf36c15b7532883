// The printers of native trees and of replies, on what whole requests do not bring about.
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <unistd.h>

#include <gtest/gtest.h>

#include "namespaces.h"
#include "print.h"
#include "reply.h"
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

// Texts are looked at in words of eight bytes: what is escaped may stand anywhere.
TEST_F(printers, json_escapes_wherever_it_stands) {
    const struct {
        const char *character, *escaped;
    } rows[] = {{"\"", "\\\""}, {"\\", "\\\\"}, {"\n", "\\n"},    {"\x01", "\\u0001"},     {"\x1f", "\\u001f"},
                {" ", " "},     {"!", "!"},     {"\x7f", "\x7f"}, {"\xc3\xa9", "\xc3\xa9"}};
    for (const auto &row : rows)
        for (size_t length : {0, 1, 7, 8, 9, 17})
            for (size_t at = 0; at <= length; ++at) {
                const std::string before(at, 'a'), after(length - at, 'a');
                zmf::output_tree tree;
                const std::string value = before + row.character + after;
                ASSERT_EQ(zmf_map_datatree_add_path_flagged(session_.context(), tree.root(), "/x", foreign,
                                                            value.c_str(), nullptr, nullptr, 0, 0),
                          RC_OK);
                EXPECT_EQ(printed([&](ocmap::output &out) { print_json(tree, out); }),
                          "{\n  \"urn:nobody:knows:this:x\": \"" + before + row.escaped + after + "\"\n}\n");
            }
}

TEST_F(printers, xml_refuses_what_it_cannot_carry) {
    add("/logical-channels/note", cfg, "tab\tand \x01");
    EXPECT_NE(json().find(R"("note": "tab\tand \u0001")"), std::string::npos);
    EXPECT_THROW(xml(false), ocmap::print_error);
}

// A leaf of each type, with values that the type admits and others. The document is one whatever they are.
TEST_F(printers, of_replies_write_scalars_by_their_type) {
    const std::string channel = "/terminal-device/logical-channels/channel[index='7']";
    const char *const device = ZMF_NS_OC_TERMINAL_DEVICE;
    struct {
        std::string leaf;
        const char *value;
        std::string json, value_ns{};
    } const rows[] = {
        {"config/index", "100000", "100000"},
        {"config/index", "0", "0"},
        {"config/index", "-5", "-5"},
        {"config/index", "07", R"("07")"},
        {"config/index", "-", R"("-")"},
        {"config/index", "4294967295", "4294967295"},
        {"config/index", "4294967296", R"("4294967296")"},
        {"config/index", "-2147483648", "-2147483648"},
        {"config/index", "99999999999999999999", R"("99999999999999999999")"},
        {"config/index", "7.0", R"("7.0")"},
        {"config/test-signal", "true", "true"},
        {"config/test-signal", "false", "false"},
        {"config/test-signal", "TRUE", R"("TRUE")"},
        {"config/description", "5", R"("5")"},
        {"config/admin-state", "MAINT", R"("MAINT")"},
        {"otn/state/errored-blocks", "18446744073709551615", R"("18446744073709551615")"},
        {"otn/state/q-value/avg", "-3.40", R"("-3.40")"},
        {"config/rate-class", "TRIB_RATE_10G", R"("openconfig-transport-types:TRIB_RATE_10G")",
         ZMF_NS_OC_TRANSPORT_TYPES},
        {"config/rate-class", "TRIB_RATE_10G", R"("TRIB_RATE_10G")"},
        {"config/rate-class", "ODD", R"("urn:nobody:knows:this:ODD")", foreign},
        {"config/description", "\x01 \"\\\n\xc3\xa9",
         R"("\u0001 \"\\\n)"
         "\xc3\xa9\""},
    };
    for (const auto &row : rows) {
        zmf::output_tree reply;
        zmf_datatree *leaf = nullptr;
        ASSERT_EQ(zmf_map_datatree_add_path_flagged(session_.context(), reply.root(),
                                                    (channel + '/' + row.leaf).c_str(), device, row.value, nullptr,
                                                    &leaf, 0, 0),
                  RC_OK);
        if (!row.value_ns.empty()) {
            leaf->value_ns = zmf_strdup(row.value_ns.c_str(), "test");
            leaf->has_value_ns = 1;
        }
        const ocmap::selection all = ocmap::whole(reply, [](zmf::output_node) {});
        const std::string text = printed([&](ocmap::output &out) { print_reply_json(reply, all, out); });
        const std::string name = row.leaf.substr(row.leaf.rfind('/') + 1);
        EXPECT_NE(text.find('"' + name + "\": " + row.json + '\n'), std::string::npos) << text;
    }
}

TEST_F(printers, of_replies_declare_namespaces_where_they_change) {
    add("/components/component[name='a']/config/name", ZMF_NS_OC_PLATFORM, "a");
    add("/components/component[name='a']/optical-channel/config/frequency", ZMF_NS_OC_TERMINAL_DEVICE, "193100000");
    add("/terminal-device/logical-channels/channel[index='7']/config/description", ZMF_NS_OC_TERMINAL_DEVICE, "x");
    const ocmap::selection all = ocmap::whole(tree_, [](zmf::output_node) {});
    EXPECT_EQ(printed([&](ocmap::output &out) { print_reply_xml(tree_, all, out); }),
              R"(<data xmlns="urn:ietf:params:xml:ns:netconf:base:1.0">
  <terminal-device xmlns="http://openconfig.net/yang/terminal-device">
    <logical-channels>
      <channel>
        <index>7</index>
        <config>
          <description>x</description>
        </config>
      </channel>
    </logical-channels>
  </terminal-device>
  <components xmlns="http://openconfig.net/yang/platform">
    <component>
      <name>a</name>
      <config>
        <name>a</name>
      </config>
      <optical-channel xmlns="http://openconfig.net/yang/terminal-device">
        <config>
          <frequency>193100000</frequency>
        </config>
      </optical-channel>
    </component>
  </components>
</data>
)");
    EXPECT_EQ(printed([&](ocmap::output &out) { print_reply_json(tree_, all, out); }), R"({
  "openconfig-terminal-device:terminal-device": {
    "logical-channels": {
      "channel": [
        {
          "index": 7,
          "config": {
            "description": "x"
          }
        }
      ]
    }
  },
  "openconfig-platform:components": {
    "component": [
      {
        "name": "a",
        "config": {
          "name": "a"
        },
        "openconfig-terminal-device:optical-channel": {
          "config": {
            "frequency": "193100000"
          }
        }
      }
    ]
  }
}
)");
}

} // namespace
