// The device itself. Answers stand in answer.cc, edits in edit.cc.
#include "device/store.h"

#include <utility>

namespace device {

store::store(description held) : held_(std::move(held)) {}

const description &store::held() const noexcept {
    return held_;
}

void store::save(const std::string &file) const {
    write_file(held_, file);
}

} // namespace device
