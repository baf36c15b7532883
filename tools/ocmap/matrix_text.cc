#include "matrix_print.h"

#include <algorithm>
#include <cstdio>

#include "paint.h"
#include "report.h"

namespace ocmap {
namespace {

std::string joined(const std::vector<std::string> &texts) {
    std::string all;
    for (const std::string &text : texts)
        all.append(all.empty() ? "" : ", ").append(text);
    return all;
}

colour colour_of(outcome what) {
    return what == outcome::mapped ? colour::green : what == outcome::refused ? colour::red : colour::yellow;
}

class printer {
public:
    explicit printer(output &out) : out_(out), paint_(1) {}

    void print(const matrix &told) {
        const char *module = "";
        for (const matrix_row &row : told.rows) {
            if (std::string_view(module) != row.leaf->module)
                out_.write(paint_(colour::bold, std::string("# ") + row.leaf->module) + "\n\n");
            module = row.leaf->module;
            print(row);
        }
        print(counts(told));
    }

private:
    void print(const matrix_row &row) {
        out_.write(paint_(colour::bold, path_of(*row.leaf)) + "\n");
        for (size_t column = 0; column < column_count; ++column)
            if (!is_told_before(row, column))
                print(row, column);
        out_.write("\n");
    }

    // Operations that come to the same stand together.
    static bool is_same(const matrix_row &row, size_t left, size_t right) {
        return std::ranges::equal(row.columns[left], row.columns[right], [](const cell_group &l, const cell_group &r) {
            return l.where == r.where && l.what == r.what;
        });
    }

    static bool is_told_before(const matrix_row &row, size_t column) {
        for (size_t before = 0; before < column; ++before)
            if (is_same(row, before, column))
                return true;
        return false;
    }

    void print(const matrix_row &row, size_t column) {
        std::string label = column_name(column);
        for (size_t behind = column + 1; behind < column_count; ++behind)
            if (is_same(row, column, behind))
                label.append(", ").append(column_name(behind));
        const auto &groups = row.columns[column];
        for (const cell_group &group : groups) {
            for (const cell_part &part : group.what.parts) {
                print(label, part, group);
                label.clear();
            }
        }
    }

    void print(const std::string &label, const cell_part &part, const cell_group &group) {
        char head[64];
        std::snprintf(head, sizeof head, "    %-16s  ", label.c_str());
        std::string text = head + paint_(colour_of(part.what), name_of(part.what));
        std::vector<std::string> of;
        if (group.what.parts.size() > 1)
            of.push_back(joined(part.whose));
        if (const std::string where = ocmap::told(group.where); !where.empty())
            of.push_back("on " + where);
        if (!of.empty())
            text += " (" + joined(of) + ")";
        if (!part.error_tag.empty())
            text += " " + part.error_tag + (part.message.empty() ? "" : ": " + one_line(part.message));
        out_.write(text + "\n");
        for (const native_target &target : part.targets)
            out_.write(std::string(24, ' ') + target.verb + " " + target.path +
                       paint_(colour::faint, " " + target.module) + "\n");
    }

    void print(const std::vector<model_count> &all) {
        out_.write(paint_(colour::bold, "# Leaves, by model") + "\n\n");
        line("", "leaves", "mapped down", "mapped up", "refused", "dropped");
        for (const model_count &each : all)
            line(each.model.c_str(), std::to_string(each.leaves), std::to_string(each.down), std::to_string(each.up),
                 std::to_string(each.refused), std::to_string(each.dropped));
    }

    void line(const char *model, const std::string &leaves, const std::string &down, const std::string &up,
              const std::string &refused, const std::string &dropped) {
        char text[160];
        std::snprintf(text, sizeof text, "%-40s%8s%13s%11s%9s%9s\n", model, leaves.c_str(), down.c_str(), up.c_str(),
                      refused.c_str(), dropped.c_str());
        out_.write(text);
    }

    output &out_;
    const paint paint_;
};

} // namespace

void print_text(const matrix &told, output &out) {
    printer(out).print(told);
}

} // namespace ocmap
