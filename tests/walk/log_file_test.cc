// The log file that other modules write through the plug-in. This program answers for the file's path itself.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>

#include "zmf/plugin.h"

namespace {

constexpr char log_path[] = "/var/log/ocoptical.log";

bool is_writable;
int opened;
std::string mode_of_open;

} // namespace

extern "C" __attribute__((visibility("default"))) FILE *fopen(const char *filename, const char *modes) {
    if (strcmp(filename, log_path) == 0) {
        ++opened;
        mode_of_open = modes;
        return is_writable ? tmpfile() : nullptr;
    }
    static const auto real = reinterpret_cast<FILE *(*)(const char *, const char *)>(dlsym(RTLD_NEXT, "fopen"));
    return real(filename, modes);
}

namespace {

std::string content(FILE *file) {
    const long here = ftell(file);
    std::string text;
    rewind(file);
    for (int c = getc(file); c != EOF; c = getc(file)) {
        text += static_cast<char>(c);
    }
    fseek(file, here, SEEK_SET);
    return text;
}

std::string without_digits(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; }, 'd');
    return text;
}

TEST(log_file, opens_stamps_and_wraps) {
    const zmf::plugin plugin(OCOPTICAL_PLUGIN);
    auto *file = static_cast<FILE **>(plugin.symbol("fp"));
    const auto log = reinterpret_cast<void (*)(const char *, ...)>(plugin.symbol("oc_log_file"));
    ASSERT_TRUE(file != nullptr && log != nullptr);

    log("lost\n"); // a file that does not open is tried again by the next line
    EXPECT_TRUE(*file == nullptr && opened == 1);
    is_writable = true;
    log("%s %d\n", "channel", 5);
    log("kept open\n");
    ASSERT_NE(*file, nullptr);
    EXPECT_EQ(opened, 2);
    struct stat on_disk {};
    EXPECT_TRUE(fstat(fileno(*file), &on_disk) == 0 && on_disk.st_size == ftell(*file)); // flushed
    EXPECT_EQ(mode_of_open, "w+");
    const std::string stamp = "dddd-dd-dd dd:dd:dd:  "; // one blank of the stamp, one behind it
    EXPECT_EQ(without_digits(content(*file)), stamp + "channel d\n" + stamp + "kept open\n");

    // 0x80000 bytes are not enough to wrap, one more is.
    constexpr long wrap = 0x80001;
    constexpr long stamp_length = 22;
    const std::string filler(static_cast<size_t>(wrap - 1 - stamp_length - ftell(*file)), 'x');
    log("%s", filler.c_str());
    EXPECT_EQ(ftell(*file), wrap - 1);
    log("y");
    EXPECT_EQ(ftell(*file), 0);
    const size_t length = content(*file).size();
    EXPECT_EQ(length, static_cast<size_t>(wrap - 1 + stamp_length + 1));
    log("from the start\n");
    EXPECT_EQ(content(*file).size(), length);
    EXPECT_EQ(content(*file).substr(stamp_length, 15), "from the start\n");
    fclose(*file);
    *file = nullptr;
}

} // namespace
