#include "apart.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>

#include <malloc.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace bench {
namespace {

[[noreturn]] void work_and_leave(const std::function<measured()> &work, int to) {
    bool told = false;
    try {
        const measured result = work();
        told = write(to, &result, sizeof result) == sizeof result;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "%s\n", error.what());
    } catch (...) {
        std::fprintf(stderr, "a walk, a file or the plug-in failed\n");
    }
    _exit(told ? 0 : 1);
}

} // namespace

void give_up(const char *reason) {
    std::fprintf(stderr, "%s\n", reason);
    std::exit(1);
}

measured apart(const std::function<measured()> &work) {
    int ends[2];
    if (pipe(ends) != 0)
        give_up("no pipe");
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child < 0)
        give_up("no process");
    if (child == 0)
        work_and_leave(work, ends[1]);
    close(ends[1]);
    measured result;
    const bool is_told = read(ends[0], &result, sizeof result) == sizeof result;
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    if (!is_told || status != 0)
        give_up("a run failed");
    return result;
}

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

double now() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

size_t heap_in_use() {
    const struct mallinfo2 heap = mallinfo2();
    return heap.uordblks + heap.hblkhd;
}

size_t resident_anew() {
    malloc_trim(0);
    if (FILE *file = std::fopen("/proc/self/clear_refs", "w")) {
        std::fputs("5", file); // the peak alone
        std::fclose(file);
    }
    unsigned long all = 0, resident_pages = 0;
    if (FILE *file = std::fopen("/proc/self/statm", "r")) {
        if (std::fscanf(file, "%lu %lu", &all, &resident_pages) != 2)
            resident_pages = 0;
        std::fclose(file);
    }
    return resident_pages * static_cast<size_t>(sysconf(_SC_PAGESIZE));
}

size_t peak_resident() {
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    return static_cast<size_t>(used.ru_maxrss) * 1024;
}

} // namespace bench
