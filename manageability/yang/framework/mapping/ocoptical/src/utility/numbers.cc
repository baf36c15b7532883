// Numeric texts between notations, and the static buffers that some results live in.
#include "utility/numbers.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "engine/callback.h"
#include "engine/export.h"
#include "exported.h"
#include "utility/text.h"

namespace ocoptical {

uint64_t to_unsigned(double number) {
    constexpr double two_to_63 = 9223372036854775808.0;
    constexpr uint64_t top_bit = UINT64_C(1) << 63;
    if (std::isnan(number)) {
        return top_bit;
    }
    if (number >= 2 * two_to_63) {
        return 0;
    }
    if (number >= two_to_63) {
        return static_cast<uint64_t>(number - two_to_63) ^ top_bit;
    }
    if (number < -two_to_63) {
        return top_bit;
    }
    return static_cast<uint64_t>(static_cast<int64_t>(number));
}

} // namespace ocoptical

using namespace ocoptical;

namespace {

// A whole number as a text tells it, widened as a signed one and taken as unsigned, then scaled.
uint64_t scaled(const char *digits, double factor) {
    const auto widened = static_cast<uint64_t>(static_cast<int64_t>(atoi(digits)));
    return to_unsigned(static_cast<double>(widened) * factor);
}

// As "%lf" does. Where all of a text is a number, strtod reads the same, and faster.
double read_double(const char *text) {
    char *end = nullptr;
    double number = strtod(text, &end);
    if (*end != '\0') {
        number = 0.0;
        sscanf(text, "%lf", &number);
    }
    return number;
}

// Prints "%.18f" of a number from 0 to 1, as error rates are, exactly as snprintf does, and many times faster. False:
// it is another number.
bool print_fraction(double number, char *out) {
    __extension__ using wide = unsigned __int128;
    constexpr uint64_t ten_to_18 = UINT64_C(1000000000000000000);
    constexpr int mantissa_bits = 53;
    if (!(number >= 0.0 && number < 1.0) || std::signbit(number)) {
        return false;
    }
    int exponent = 0;
    const auto mantissa = static_cast<uint64_t>(std::ldexp(std::frexp(number, &exponent), mantissa_bits));
    const int shift = mantissa_bits - exponent; // the number is mantissa / 2^shift
    uint64_t digits = 0;
    if (shift < 128) {
        const wide scaled = wide{mantissa} * ten_to_18;
        digits = static_cast<uint64_t>(scaled >> shift);
        const wide rest = scaled - (wide{digits} << shift), half = wide{1} << (shift - 1);
        digits += rest > half || (rest == half && digits % 2 != 0) ? 1 : 0;
    }
    char *at = stpcpy(out, "0.000000000000000000");
    for (; digits != 0; digits /= 10) {
        *--at = static_cast<char>('0' + digits % 10);
    }
    return true;
}

} // namespace

OC_EXPORT char sopmd_str[text_size];
OC_EXPORT char pdl_str[text_size];
OC_EXPORT char inpower_str[text_size];

namespace {

// Two decimals, in a buffer that the next call writes over.
const char *print_two_decimals(const zmf_datatree *node, char *buffer) {
    memset(buffer, 0, text_size);
    if (node == nullptr || node->value == nullptr) {
        return nullptr;
    }
    snprintf(buffer, text_size, "%.2f", read_double(node->value));
    return buffer;
}

} // namespace

VALUE_CONVERSION(oc_optical_sopmd_str_to_decimal) {
    return print_two_decimals(node, sopmd_str);
}
VALUE_CONVERSION(oc_optical_pdl_str_to_decimal) {
    return print_two_decimals(node, pdl_str);
}
VALUE_CONVERSION(oc_optical_inpower_str_to_decimal) {
    return print_two_decimals(node, inpower_str);
}

OC_EXPORT rcode oc_optical_convert_decimal_to_scientific_notation(const char *text, char *out) {
    *out = '\0';
    if (text != nullptr) {
        const double number = read_double(text);
        snprintf(out, text_size, number == 0.0 ? "0E-15" : "%2.1E", number);
    }
    return RC_OK;
}

OC_EXPORT rcode oc_optical_convert_scientific_to_decimal_notation(const char *text, char *out) {
    *out = '\0';
    if (text != nullptr) {
        const double number = read_double(text);
        if (!print_fraction(number, out)) {
            snprintf(out, text_size, "%.18f", number);
        }
        oc_optical_truncate_trail_zeroes(out);
    }
    return RC_OK;
}

OC_EXPORT void oc_optical_truncate_trail_zeroes(char *text) {
    size_t length = strlen(text);
    while (length != 0 && text[length - 1] == '0') {
        --length;
    }
    if (length != 0 && text[length - 1] == '.') {
        text[length++] = '0';
    }
    text[length] = '\0';
}

OC_EXPORT uint64_t float_string_to_int(char *text, int32_t precision) {
    if (*text == '\0') {
        return 0;
    }
    const char *whole = strtok(text, ".");
    if (whole == nullptr) {
        return 0; // points only
    }
    const uint64_t whole_part = scaled(whole, pow(10.0, precision));
    const char *fraction = strtok(nullptr, ".");
    if (fraction == nullptr) {
        return whole_part;
    }
    // A fraction longer than the precision gives a huge exponent, and is lost as a whole.
    const auto exponent =
        static_cast<uint64_t>(static_cast<int64_t>(precision) - static_cast<int64_t>(strlen(fraction)));
    return whole_part + scaled(fraction, pow(10.0, static_cast<double>(exponent)));
}
