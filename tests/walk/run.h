// Runs one request through the test model and tells what happened.
#pragma once

#include <string>

#include "fake.h"
#include "request_text.h"

struct walk_case {
    const char *what;
    uint32_t kind;
    std::string request; // see request_text.h; a top node other than "top" goes to the augment entry
    std::string log;     // events (see fake.h) set apart by ";", and how the walk ended
    const char *script = "";
    std::string entries = {}; // list entries of a frame, as a request
};

// Runs the request `text` in the framework. The log then ends with the status ("= ok", "= LIST_KEY_ERROR msg=id"), and
// with what the walk left otherwise than it found it ("left f10000 box!merge"). Gives the marks of the nodes
// (request_text::marks).
std::string run(fake::framework &f, const std::string &text);

// The requests that walk_test.cc holds against their logs; others reuse them.
const std::vector<walk_case> &walk_cases();

std::string lines(const std::string &events); // one event a line, without blanks around
