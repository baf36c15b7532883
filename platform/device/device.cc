// Reading of device descriptions. To add a member: a row in `members`, its field in device.h, its line in
// docs/device-file.md.
#include "device/device.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <fcntl.h>
#include <optional>
#include <unistd.h>
#include <unordered_map>
#include <unordered_set>

#include "device/json_text.h"
#include "device/lab.h"
#include "device/native_json.h"
#include "device/text.h"
#include "hardware/hardware.h"
#include "pouch/fields.h"
#include "pouch/registry.h"

namespace device {
namespace {

constexpr uint32_t highest_channel = 100000;
constexpr size_t longest_name = 63;

// Whole decimal numbers without sign and leading zeros.
template <typename number>
std::optional<number> to_number(std::string_view written) {
    number result = 0;
    const char *end = written.data() + written.size();
    const auto [stopped, error] = std::from_chars(written.data(), end, result);
    const bool is_padded = written.size() > 1 && written.front() == '0';
    return error == std::errc() && stopped == end && !is_padded ? std::optional(result) : std::nullopt;
}

std::string quoted(std::string_view written) {
    return '"' + text::shortened(written) + '"';
}

// The interface map knows names with "_" for "/".
std::string mapped(std::string name) {
    std::ranges::replace(name, '/', '_');
    return name;
}

// What a name of a channel or an interface may not be; empty if nothing is wrong with it.
std::string fault_of_name(std::string_view name) {
    if (name.size() > longest_name)
        return "name " + quoted(name) + " is longer than 63 characters";
    if (std::ranges::any_of(name, [](char byte) { return byte <= ' ' || byte > '~'; }))
        return "name " + quoted(name) + " holds what is no printable ASCII character";
    return "";
}

class reader : public json_text::visitor {
public:
    explicit reader(std::string_view whole) : state_(result.state_store, whole) {}
    reader(const reader &) = delete;
    reader &operator=(const reader &) = delete;

    description result;

    void open_object(size_t at) override {
        if (json_text::visitor *part = open_part())
            return part->open_object(at);
        if (place_ == place::outside)
            place_ = place::top;
        else if (place_ == place::top && member_->what == shape::names_by_channel)
            place_ = place::channels;
        else if (place_ == place::top && member_->what == shape::config)
            config_.open_object(at);
        else if (place_ == place::top && member_->what == shape::operational)
            operational_.open_object(at);
        else if (place_ == place::top && member_->what == shape::state_items)
            state_.open_object(at);
        else
            refuse(at);
    }

    void member(std::string_view name, size_t at) override {
        if (json_text::visitor *part = open_part())
            part->member(name, at);
        else if (place_ == place::top)
            member_ = member_at(name, at);
        else
            channel_ = channel_number(name, at);
    }

    void close_object(size_t at) override {
        if (json_text::visitor *part = open_part())
            part->close_object(at);
        else
            place_ = place_ == place::channels ? place::top : place::outside;
    }

    void open_array(size_t at) override {
        if (json_text::visitor *part = open_part())
            return part->open_array(at);
        if (place_ != place::top || member_->what != shape::names)
            refuse(at);
        place_ = place::interfaces;
    }

    void close_array(size_t at) override {
        if (json_text::visitor *part = open_part())
            return part->close_array(at);
        place_ = place::top;
    }

    void value(json_text::scalar what, std::string_view written, size_t at) override {
        if (json_text::visitor *part = open_part())
            return part->value(what, written, at);
        if (place_ == place::channels)
            return add_channel(what, written, at);
        if (place_ == place::interfaces)
            return add_interface(what, written, at);
        if (place_ == place::outside)
            refuse(at);
        if (member_->what == shape::flag && what == json_text::scalar::boolean)
            result.*member_->flag = written == "true";
        else if (const auto number = to_number<uint32_t>(written);
                 member_->what == shape::number && what == json_text::scalar::number && number)
            result.*member_->number = *number;
        else
            refuse(at);
    }

private:
    enum class place { outside, top, channels, interfaces };
    enum class shape { number, flag, names_by_channel, names, config, operational, state_items };

    struct member_row {
        const char *name;
        shape what;
        uint32_t description::*number;
        bool description::*flag;
    };

    static constexpr member_row members[] = {
        {"router-type", shape::number, &description::router_type, nullptr},
        {"optical-terminal-device", shape::flag, nullptr, &description::optical_terminal_device},
        {"legacy-optical-terminal-device", shape::flag, nullptr, &description::legacy_optical_terminal_device},
        {"flex-bins", shape::flag, nullptr, &description::flex_bins},
        {"channels", shape::names_by_channel, nullptr, nullptr},
        {"interface-registry", shape::flag, nullptr, &description::interface_registry},
        {"interfaces", shape::names, nullptr, nullptr},
        {"config", shape::config, nullptr, nullptr},
        {"operational", shape::operational, nullptr, nullptr},
        {"state-store-installed", shape::flag, nullptr, &description::state_store_installed},
        {"state-store", shape::state_items, nullptr, nullptr},
    };

    // Takes what stands inside a member of its own form; null outside of these.
    json_text::visitor *open_part() {
        for (native_reader *native : {&config_, &operational_})
            if (native->is_open())
                return native;
        return state_.is_open() ? &state_ : nullptr;
    }

    static const member_row *member_at(std::string_view name, size_t at) {
        const auto *const found = std::ranges::find(members, name, &member_row::name);
        if (found == std::end(members))
            throw json_text::refusal{at, "unknown member " + quoted(name)};
        return found;
    }

    static const char *wanted_by(shape what) {
        switch (what) {
        case shape::number:
            return "a number from 0 to 4294967295";
        case shape::flag:
            return "true or false";
        case shape::names_by_channel:
            return "an object of channel numbers and names";
        case shape::names:
            return "an array of names";
        case shape::config:
        case shape::operational:
            return "an object of native containers";
        case shape::state_items:
            break;
        }
        return "an object of paths and items";
    }

    // Refuses a value of another shape than what stands here takes.
    [[noreturn]] void refuse(size_t at) const {
        if (place_ == place::outside)
            throw json_text::refusal{at, "a device description is an object"};
        if (place_ == place::channels)
            throw json_text::refusal{at, "the name of channel " + quoted(channel_) + " is no text"};
        if (place_ == place::interfaces)
            throw json_text::refusal{at, "the name of an interface is no text"};
        throw json_text::refusal{at, quoted(member_->name) + " takes " + wanted_by(member_->what)};
    }

    static std::string channel_number(std::string_view name, size_t at) {
        const auto number = to_number<uint32_t>(name);
        if (!number || *number < 1 || *number > highest_channel)
            throw json_text::refusal{at, "channel " + quoted(name) + " is no number from 1 to 100000"};
        return std::string(name);
    }

    void add_channel(json_text::scalar what, std::string_view name, size_t at) {
        const uint32_t number = to_number<uint32_t>(channel_).value();
        if (what != json_text::scalar::string)
            refuse(at);
        if (name.empty())
            throw json_text::refusal{at, "the name of channel " + quoted(channel_) + " is empty"};
        if (std::string fault = fault_of_name(name); !fault.empty())
            throw json_text::refusal{at, std::move(fault)};
        if (const auto [taken, is_new] = channel_of_.emplace(mapped(std::string(name)), number); !is_new)
            throw json_text::refusal{at, "name " + quoted(name) + " is that of channel " +
                                             std::to_string(taken->second) + " already"};
        result.channels.emplace(number, name);
    }

    void add_interface(json_text::scalar what, std::string_view name, size_t at) {
        if (what != json_text::scalar::string)
            refuse(at);
        if (name.empty())
            throw json_text::refusal{at, "the name of an interface is empty"};
        if (std::string fault = fault_of_name(name); !fault.empty())
            throw json_text::refusal{at, std::move(fault)};
        if (!interfaces_.insert(hardware::internal_name(name)).second)
            throw json_text::refusal{at, "interface " + quoted(name) + " stands twice"};
        result.interfaces.emplace_back(name);
    }

    place place_ = place::outside;
    const member_row *member_ = nullptr;
    std::string channel_;
    std::unordered_map<std::string, uint32_t> channel_of_;
    std::unordered_set<std::string> interfaces_;
    native_reader config_{result.config, native_kind::configuration};
    native_reader operational_{result.operational, native_kind::operational};
    state_reader state_;
};

std::string read_bytes(const std::string &file) {
    const int descriptor = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        throw description_error{file, 0, 0, std::strerror(errno)};
    std::string bytes;
    std::string piece(size_t{1} << 16, '\0');
    ssize_t count = 0;
    while ((count = ::read(descriptor, piece.data(), piece.size())) > 0 || (count < 0 && errno == EINTR))
        bytes.append(piece, 0, count > 0 ? static_cast<size_t>(count) : 0);
    const int error = errno;
    ::close(descriptor);
    if (count < 0)
        throw description_error{file, 0, 0, std::strerror(error)};
    return bytes;
}

} // namespace

description read_file(const std::string &file) {
    return parse(read_bytes(file), file);
}

description parse(std::string_view json, const std::string &name_for_errors) {
    reader told(json);
    try {
        json_text::read(json, told);
    } catch (const json_text::error &error) {
        throw description_error{name_for_errors, error.line, error.column, error.text};
    }
    return std::move(told.result);
}

const description &lab() {
    static const description built_in = parse(lab_json, "lab.json");
    return built_in;
}

void install(const description &d) {
    hardware::facts &facts = hardware::current();
    facts.router_type = d.router_type;
    facts.optical_terminal_device = d.optical_terminal_device;
    facts.legacy_optical_terminal_device = d.legacy_optical_terminal_device;
    facts.name_of.clear();
    facts.channel_of.clear();
    for (const auto &[number, name] : d.channels) {
        facts.name_of[number] = mapped(name);
        facts.channel_of[mapped(name)] = number;
    }
    facts.registry_reachable = d.interface_registry;
    facts.interfaces.clear();
    for (const std::string &name : d.interfaces)
        facts.interfaces.emplace(hardware::internal_name(name), static_cast<uint32_t>(facts.interfaces.size() + 1));
    facts.state_store_installed = d.state_store_installed;
    facts.state_items.clear();
}

void install_state_store(const description &d, const std::string &name_for_errors) {
    hardware::by_text<std::string> encoded;
    for (const auto &[path, item] : d.state_store) {
        const auto refuse = [&name_for_errors](pouch::place at, std::string text) {
            throw description_error{name_for_errors, at.line, at.column, std::move(text)};
        };
        const pouch::record_type *type = pouch::find_type(item.record);
        if (type == nullptr)
            refuse(item.record_at, "unknown record " + quoted(item.record));
        else if (!type->has_schema())
            refuse(item.record_at, "record " + quoted(item.record) + " has no schema, so that nothing encodes it");
        else
            try {
                encoded[path] = pouch::encode_fields(*type, item.fields);
            } catch (const pouch::field_fault &fault) {
                refuse(fault.at, fault.text);
            }
    }
    hardware::current().state_items = std::move(encoded);
}

} // namespace device
