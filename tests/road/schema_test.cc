// The models as the host knows them, held against what the plug-in exports: name by name, in both directions.
#include <elf.h>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include "schema/schema.h"

namespace {

const std::string prefix = "ymap_ox_oc_optical_";

template <typename record>
record read_record(const std::string &bytes, size_t at) {
    record result;
    std::memcpy(&result, bytes.substr(at, sizeof result).data(), sizeof result);
    return result;
}

// Names of the defined symbols in the dynamic symbol table of the plug-in.
std::set<std::string> exported_names() {
    std::ifstream file(OCOPTICAL_PLUGIN, std::ios::binary);
    const std::string bytes(std::istreambuf_iterator<char>(file), {});
    std::set<std::string> names;
    if (bytes.size() < sizeof(Elf64_Ehdr))
        return names;
    const auto head = read_record<Elf64_Ehdr>(bytes, 0);
    const auto section = [&](size_t number) {
        return read_record<Elf64_Shdr>(bytes, head.e_shoff + number * sizeof(Elf64_Shdr));
    };
    for (size_t number = 0; number < head.e_shnum; ++number) {
        const Elf64_Shdr table = section(number);
        if (table.sh_type != SHT_DYNSYM)
            continue;
        const Elf64_Shdr texts = section(table.sh_link);
        for (size_t at = 0; at < table.sh_size; at += sizeof(Elf64_Sym))
            if (const auto symbol = read_record<Elf64_Sym>(bytes, table.sh_offset + at); symbol.st_shndx != SHN_UNDEF)
                names.insert(bytes.c_str() + texts.sh_offset + symbol.st_name);
    }
    return names;
}

// As it stands in the names of callbacks.
std::string squeezed(std::string text) {
    std::erase(text, '-');
    std::ranges::transform(text, text.begin(), [](unsigned char byte) { return std::tolower(byte); });
    return text;
}

bool is_callback_of(const std::string &module, const std::string &name) {
    for (const char *kind : {"_cont_", "_list_", "_leaf_"})
        if (name.starts_with(prefix + squeezed(module) + kind))
            return true;
    return false;
}

std::set<std::string> modules() {
    std::set<std::string> found;
    for (const schema::model &model : schema::models())
        for (const schema::node &node : model.nodes)
            found.insert(node.module);
    return found;
}

// Those that the plug-in has callbacks of: it may know of a module only what others add to it.
std::set<std::string> mapped_modules(const std::set<std::string> &exported) {
    std::set<std::string> found = modules();
    std::erase_if(found, [&](const std::string &module) {
        return std::none_of(exported.begin(), exported.end(),
                            [&](const std::string &name) { return is_callback_of(module, name); });
    });
    return found;
}

TEST(schema, has_the_callbacks_of_the_plug_in) {
    const std::set<std::string> exported = exported_names();
    const std::set<std::string> mapped = mapped_modules(exported);
    EXPECT_EQ(mapped, (std::set<std::string>{"Corvane-openconfig-terminal-device-ext", "openconfig-if-ethernet",
                                             "openconfig-platform", "openconfig-platform-transceiver",
                                             "openconfig-terminal-device"}));
    std::set<std::string> known;
    for (const schema::model &model : schema::models()) {
        EXPECT_TRUE(exported.contains(model.entry)) << model.entry;
        for (const schema::node &node : model.nodes) {
            const std::string name = prefix + node.callback;
            EXPECT_TRUE(exported.contains(name) || !mapped.contains(node.module)) << name;
            EXPECT_TRUE(known.insert(name).second) << name << " stands twice";
            EXPECT_TRUE(name.ends_with("_" + squeezed(node.tag))) << node.tag << " has " << name;
        }
    }
    for (const std::string &name : exported) {
        for (const std::string &module : mapped)
            EXPECT_TRUE(!is_callback_of(module, name) || known.contains(name)) << name;
    }
}

} // namespace
