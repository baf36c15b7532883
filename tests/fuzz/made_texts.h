// Random trees in JSON, by the tables of platform/schema: native data, and requests of a client. Values are those that
// the examples give to leaves of the same name, those of other leaves, and odd ones.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "schema/schema.h"

namespace fuzz {

class made_texts {
public:
    made_texts(uint64_t seed, const std::vector<std::string> &examples);

    // A description takes it whole, or says what it does not take. Without `is_whole` keys and modules may be wrong
    // too.
    std::string native(bool is_config, bool is_whole);
    std::string read();
    std::string edit();

    size_t below(size_t end) { return random_() % end; }
    bool one_in(size_t n) { return below(n) == 0; }

private:
    enum class form { description, native, read, edit };

    std::string native_children(const schema::native_node *parent, bool is_config, form what);
    std::string native_keys(const schema::native_node &list, form what);
    std::string native_node(const schema::native_node &node, form what);
    std::string request(form what);
    std::string children(const schema::node *parent, const schema::model &model, form what, size_t most);
    std::string node(const schema::node &row, const schema::model &model, form what);
    std::string entry(const schema::node &row, const schema::model &model, form what);
    std::string operation();
    std::string value(const char *tag, bool is_number);
    std::string text(const char *tag);

    std::mt19937_64 random_;
    std::map<std::string, std::vector<std::string>, std::less<>> known_; // values by the leaf's name
    std::vector<std::string> all_;
};

} // namespace fuzz
