// The matrix in its four forms.
#pragma once

#include "output.h"
#include "survey/matrix.h"

namespace ocmap {

void print_text(const matrix &told, output &out); // for people; the counts in the last lines
void print_csv(const matrix &told, output &out);  // a line for each leaf on each platform (RFC 4180)
void print_json(const matrix &told, output &out); // cells that are the same stand once
void print_html(const matrix &told, output &out); // one page, which needs nothing else

} // namespace ocmap
