// Native data in a device description, what the device is configured to or what it reports: an object of top containers
// with their module, as in
// {"Corvane-terminal-device-cfg:logical-channels": {"channel": [{"channel-index": 100, "admin-state": "enable"}]}}.
// Below it members stand without module; lists are arrays of objects that hold all keys, leaf-lists arrays of values.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "device/json_text.h"
#include "device/native_data.h"

namespace device {

enum class native_kind : uint8_t { configuration, operational };

// Is told what stands from the opening of the object to its end, both included.
class native_reader : public json_text::visitor {
public:
    native_reader(record &into, native_kind takes) : into_(&into), takes_(takes) {}
    bool is_open() const noexcept { return !open_.empty(); }

    void open_object(size_t at) override;
    void member(std::string_view name, size_t at) override;
    void close_object(size_t at) override;
    void open_array(size_t at) override;
    void close_array(size_t at) override;
    void value(json_text::scalar what, std::string_view text, size_t at) override;

private:
    struct frame {
        const schema::native_node *node; // null for the outermost object
        bool is_array;
        size_t at;
        record entry;                  // of an entry of a list
        std::vector<std::string> keys; // of that entry, empty where not given yet
    };

    const schema::native_node *inner() const noexcept { return open_.back().node; }
    record &target() noexcept;
    void take_entry(frame &entry);
    void set_key(std::string value, size_t at);

    record *into_;
    native_kind takes_;
    const schema::native_node *named_ = nullptr; // by the last member
    std::vector<frame> open_;
};

// Both append: a text as a JSON string, and native data as an object that begins in a line indented this much.
void append_text(std::string &json, std::string_view text);
void append_native(std::string &json, const record &data, size_t indent);

} // namespace device
