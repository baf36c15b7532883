// The page is matrix_page.html, which the build compiles in; the data stands in it where it says so.
#include "matrix_print.h"

#include "matrix_page.h"

namespace ocmap {
namespace {

// JSON as it may stand in a page: nothing in it can end the element around it. White space of its layout is left out.
std::string for_page(const std::string &json) {
    std::string text;
    bool is_line_begin = false;
    for (const char letter : json) {
        if (letter == '\n') {
            is_line_begin = true;
        } else if (!is_line_begin || letter != ' ') {
            is_line_begin = false;
            text += letter == '<' ? "\\u003c" : std::string(1, letter);
        }
    }
    return text;
}

} // namespace

void print_html(const matrix &told, output &out) {
    constexpr std::string_view mark = "MATRIX_DATA";
    const size_t at = matrix_page.find(mark);
    std::string json;
    output into(json);
    print_json(told, into);
    into.finish();
    out.write(matrix_page.substr(0, at));
    out.write(for_page(json));
    out.write(matrix_page.substr(at + mark.size()));
}

} // namespace ocmap
