// Measuring one thing in a process of its own, so that no run finds memory that an earlier one has warmed.
#pragma once

#include <functional>
#include <vector>

namespace bench {

struct measured {
    double seconds = 0;
    double bytes = 0; // of what `work` says it measures
    double size = 0;  // of what came out
};

// Runs `work` in a child and hands back what it measured. Ends the program if the child fails.
measured apart(const std::function<measured()> &work);

double median(std::vector<double> values);

[[noreturn]] void give_up(const char *reason); // ends the program

double now(); // seconds

// Bytes, of this process.
size_t heap_in_use();
size_t resident_anew(); // gives unused memory back and forgets the peak
size_t peak_resident(); // the most that it was since

} // namespace bench
