// The stand-alone log file: wraps around at about 512 KiB. Nothing in the plug-in writes to it; other modules do.
#include <cstdarg>
#include <cstdio>
#include <ctime>

#include "engine/export.h"
#include "exported.h"

namespace {

constexpr char log_path[] = "/var/log/ocoptical.log";
constexpr long wrap_at = 0x80001;
constexpr size_t stamp_size = 30;

} // namespace

OC_EXPORT FILE *fp = nullptr;

OC_EXPORT void oc_log_file(const char *format, ...) {
    if (fp == nullptr) {
        fp = fopen(log_path, "w+");
        if (fp == nullptr) {
            return;
        }
    }
    char stamp[stamp_size] = "";
    const time_t now = time(nullptr);
    tm local{};
    if (localtime_r(&now, &local) != nullptr) {
        strftime(stamp, sizeof stamp, "%Y-%m-%d %H:%M:%S: ", &local);
    }
    fprintf(fp, "%s ", stamp);
    va_list arguments;
    va_start(arguments, format);
    vfprintf(fp, format, arguments);
    va_end(arguments);
    fflush(fp);
    if (ftell(fp) >= wrap_at) {
        fseek(fp, 0, SEEK_SET);
    }
}
