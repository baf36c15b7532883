// What a conversion adds, for tables of tests: "PATH=VALUE @ list cross", one add a line, where "@" stands for a source
// node. "entry NAME" is an entry of the component list, "name" its config/name, "repair" a namespace that is given
// back. Long heads of paths are letters:
//
//   I  /interface-configurations/interface-configuration    O  the same with /optics
//   T  /optical-channels/optical-channel                    N  /logical-channels/channel
//   P  /optics-oper/optics-ports/optics-port                C  /components/component/optical-channel
#pragma once

#include <string>
#include <vector>

#include "zmf/session.h"

// Follows a session from its making on. The namespace of each add is held against the module that its path belongs to.
class add_log {
public:
    explicit add_log(zmf::session &session);

    std::string text;
    std::vector<std::string> marks; // err_msg at each error mark, "" where there was none

private:
    void note(const zmf::call &call, const char *err_msg);
    void note_add(const zmf::call &call);
};
