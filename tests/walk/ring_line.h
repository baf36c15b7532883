// A line of the ring trace in its parts: "#7: ERR: walker:12 ctx=0x1,text".
#pragma once

#include <cstdio>
#include <string>

struct ring_line {
    unsigned int number = 0;
    std::string level, function;
    int source_line = 0;
    void *ctx = nullptr;
    std::string text;

    explicit ring_line(const std::string &line) {
        char its_level[4] = "", its_function[200] = "";
        int head = 0;
        const int parts = sscanf(line.c_str(), "#%u: %3[A-Z]: %199[a-z0-9_]:%d ctx=%p,%n", &number, its_level,
                                 its_function, &source_line, &ctx, &head);
        if (parts == 5 && head != 0) {
            level = its_level;
            function = its_function;
            text = line.substr(static_cast<size_t>(head));
        } else {
            text = "not of the form: " + line;
        }
    }
};
