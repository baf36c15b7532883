#include "matrix_print.h"

#include "json_fields.h"

namespace ocmap {
namespace {

std::vector<size_t> numbers_of(const platform_set &those) {
    std::vector<size_t> all;
    for (size_t each = 0; each < platform_count; ++each)
        if (those[each])
            all.push_back(each);
    return all;
}

class printer {
public:
    explicit printer(output &out) : to_(out) {}

    void print(const matrix &told) {
        to_.object([&] {
            to_.objects("platforms", platforms(), [&](const platform &each) { print(each); });
            to_.objects("leaves", told.rows, [&](const matrix_row &each) { print(each); });
            to_.objects("counts", counts(told), [&](const model_count &each) { print(each); });
        });
        to_.finish();
    }

private:
    void print(const platform &kind) {
        to_.number("router-type", kind.router_type);
        to_.truth("optical-terminal-device", kind.has_terminal_device);
        to_.truth("legacy", kind.is_legacy);
        to_.truth("history", kind.has_history);
    }

    void print(const matrix_row &row) {
        to_.text("model", row.leaf->module);
        to_.text("path", path_of(*row.leaf));
        to_.truth("config", row.leaf->is_config);
        for (size_t column = 0; column < column_count; ++column)
            to_.objects(column_name(column), row.columns[column], [&](const cell_group &each) { print(each); });
    }

    void print(const cell_group &group) {
        to_.numbers("platforms", numbers_of(group.where));
        to_.text("outcome", name_of(group.what.what()));
        to_.objects("parts", group.what.parts, [&](const cell_part &each) { print(each); });
    }

    void print(const cell_part &part) {
        to_.texts("of", part.whose);
        to_.text("outcome", name_of(part.what));
        if (!part.error_tag.empty()) {
            to_.text("error-tag", part.error_tag);
            to_.text("message", part.message);
        }
        to_.objects("native", part.targets, [&](const native_target &each) {
            to_.text("verb", each.verb);
            to_.text("path", each.path);
            to_.text("module", each.module);
        });
    }

    void print(const model_count &each) {
        to_.text("model", each.model);
        to_.number("leaves", each.leaves);
        to_.number("mapped-down", each.down);
        to_.number("mapped-up", each.up);
        to_.number("refused", each.refused);
        to_.number("dropped", each.dropped);
    }

    json_fields to_;
};

} // namespace

void print_json(const matrix &told, output &out) {
    printer(out).print(told);
}

} // namespace ocmap
