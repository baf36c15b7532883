#include "matrix_print.h"

namespace ocmap {
namespace {

// In quotes, these doubled, where the text has what ends a field.
std::string field(const std::string &text) {
    if (text.find_first_of(",\"\r\n") == std::string::npos)
        return text;
    std::string quoted = "\"";
    for (const char letter : text)
        quoted.append(letter == '"' ? 2 : 1, letter);
    return quoted + '"';
}

std::string targets_of(const cell &told) {
    std::string all;
    for (const cell_part &part : told.parts)
        for (const native_target &target : part.targets) {
            const std::string one = target.module + ":" + target.path;
            if (all.find(one) == std::string::npos)
                all += (all.empty() ? "" : " ") + one;
        }
    return all;
}

const char *yes_or_no(bool value) {
    return value ? "yes" : "no";
}

// A cell is told anew only for the first of the platforms that share it.
class cell_texts {
public:
    explicit cell_texts(const matrix_row &row) {
        for (size_t column = 0; column < column_count; ++column)
            for (const cell_group &group : row.columns[column]) {
                const std::string text =
                    std::string(",") + name_of(group.what.what()) + "," + field(targets_of(group.what));
                for (size_t each = 0; each < platform_count; ++each)
                    if (group.where[each])
                        lines_[each] += text;
            }
    }
    const std::string &of(size_t platform) const { return lines_[platform]; }

private:
    std::array<std::string, platform_count> lines_;
};

} // namespace

void print_csv(const matrix &told, output &out) {
    out.write("model,leaf,router-type,optical-terminal-device,legacy,statistics");
    for (size_t column = 0; column < column_count; ++column)
        out.write(std::string(",") + column_name(column) + "," + column_name(column) + " native");
    out.write("\r\n");
    for (const matrix_row &row : told.rows) {
        const cell_texts cells(row);
        const std::string leaf = field(row.leaf->module) + "," + field(path_of(*row.leaf));
        for (size_t each = 0; each < platform_count; ++each) {
            const platform &kind = platforms()[each];
            out.write(leaf + "," + std::to_string(kind.router_type) + "," + yes_or_no(kind.has_terminal_device) + "," +
                      yes_or_no(kind.is_legacy) + "," + (kind.has_history ? "history" : "flex bins") + cells.of(each) +
                      "\r\n");
        }
    }
}

} // namespace ocmap
