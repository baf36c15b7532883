// A framework that keeps no output: it logs what a walk asks of it and of the test model's callbacks, answers by a
// script, and fails where a test wants it. Events of the log:
//
//   box/2(box !remove all dw1 PD PA f4)   a callback: container count, node and its explicit operation, and the walk
//   words ?box(x:foo)                           a _parse_augments hook +1 box    - box                       the walk
//   record
//   @ /t/entry                            current list entry
//   leafref /t/entry config id entry      check of a key against its leaf under config
//   add id urn:test into entry            an add
//   push 2    pop                         the stack of frames
//   fn(entry)                             the function of a frame
//   ! text                                a line of level "ERR"
//   err                                   the error mark
#pragma once

#include <deque>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "zmf.h"

namespace fake {

inline constexpr rcode bad = 0x77;          // what a script answers with "bad"
inline constexpr rcode injected = 0x5eed01; // what fail_at answers with

struct debug_line {
    void *handle;
    uint32_t *filter_word;
    uint32_t filter_value; // when the line came
    std::string text;
};

class framework {
public:
    explicit framework(uint32_t op_type);
    ~framework();
    framework(const framework &) = delete;
    framework &operator=(const framework &) = delete;

    // "entry:nm,ok v:bad @:ok,bad": the answers to successive calls (ok, nm, bad); the last stands for all later ones.
    // A list callback may also put `entries` in its node's place: frame, frame+fn, frame+bad, null-frame.
    void script(const std::string &text);

    std::string joined_log() const; // one event a line
    std::string words() const;      // the walk words that are not zero, each with a blank before it

    zmf_map_ctx_rec ctx{};
    zmf_req_ctx req{};
    zmf_request request{};
    zmf_datatree output{};
    zmf_datatree added{}; // handed out by adds
    std::vector<zmf_datatree> *entries = nullptr;

    std::vector<std::string> log;
    std::vector<std::string> ring;
    std::vector<debug_line> debug;
    uint32_t debug_levels = 0; // bit 0 "ERR", bit 3 "TRC"
    bool logs_error_lines = true;

    uint64_t fail_at = 0; // the n-th call that answers with a status, callbacks and hooks among them
    uint64_t status_calls = 0;
    bool failed_in_fall_through = false;
    uint64_t null_strdup_at = 0;
    uint64_t strdups = 0;
    uint64_t error_marks = 0;
    std::set<void *> texts; // given out by zmf_strdup, not yet released
    uint32_t trace_index = 0;

    std::vector<const zmf_datatree *> hierarchy;
    std::deque<zmf_itree_frame> frames;
    std::vector<std::string> faults; // calls that no walk may make

    rcode answer(const std::string &caller);

private:
    void play(const std::string &action);
    std::map<std::string, std::deque<std::string>> script_;
};

framework &of(zmf_map_ctx ctx);
std::string name_of(const zmf_datatree *node); // "x:foo !remove"

// What each callback of the test model does; `count` of a container.
rcode called(zmf_map_ctx ctx, const char *name, const zmf_datatree *node, int count = -1);

} // namespace fake
