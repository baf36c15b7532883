// Device descriptions as files. A new file is made beside the old one and takes its place when it is complete and on
// the disk, so that whoever reads finds one of them, whole.
#include "device/device.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "device/native_json.h"

namespace device {
namespace {

constexpr mode_t permission_bits = 07777;

class open_file {
public:
    explicit open_file(int descriptor) : descriptor_(descriptor) {}
    ~open_file() {
        if (descriptor_ >= 0)
            ::close(descriptor_);
    }
    open_file(const open_file &) = delete;
    open_file &operator=(const open_file &) = delete;

    int descriptor() const noexcept { return descriptor_; }
    bool close() noexcept { return ::close(std::exchange(descriptor_, -1)) == 0; }

private:
    int descriptor_;
};

// A file that is gone unless it was renamed.
class temporary_file {
public:
    explicit temporary_file(const std::string &beside)
        : name_(beside + ".XXXXXX"), file_(::mkostemp(name_.data(), O_CLOEXEC)), is_there_(file_.descriptor() >= 0) {}
    ~temporary_file() {
        if (is_there_)
            ::unlink(name_.c_str());
    }
    temporary_file(const temporary_file &) = delete;
    temporary_file &operator=(const temporary_file &) = delete;

    bool is_there() const noexcept { return is_there_; }

    bool take_owner(uid_t user, gid_t group) noexcept {
        return ::fchown(file_.descriptor(), user, group) == 0 || errno == EPERM;
    }
    bool take_permissions(mode_t mode) noexcept { return ::fchmod(file_.descriptor(), mode & permission_bits) == 0; }

    bool write(std::string_view bytes) noexcept {
        while (!bytes.empty()) {
            const ssize_t written = ::write(file_.descriptor(), bytes.data(), bytes.size());
            if (written < 0 && errno != EINTR)
                return false;
            bytes.remove_prefix(written < 0 ? 0 : static_cast<size_t>(written));
        }
        return true;
    }

    bool complete() noexcept { return ::fsync(file_.descriptor()) == 0 && file_.close(); }

    bool rename_to(const std::string &file) noexcept {
        if (::rename(name_.c_str(), file.c_str()) != 0)
            return false;
        is_there_ = false;
        return true;
    }

private:
    std::string name_;
    open_file file_;
    bool is_there_;
};

// Where a link leads to, so that the link itself stays.
std::string target_of(const std::string &file) {
    char *resolved = ::realpath(file.c_str(), nullptr);
    std::string target = resolved == nullptr ? file : resolved;
    std::free(resolved);
    return target;
}

std::string directory_of(const std::string &file) {
    const size_t slash = file.rfind('/');
    return slash == std::string::npos ? "." : file.substr(0, slash + 1);
}

mode_t mode_of_new_files() {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

// An error number, 0 for none.
int replace_file(const std::string &file, std::string_view bytes) {
    struct stat old {};
    const bool is_new = ::stat(file.c_str(), &old) != 0;
    if (!is_new && !S_ISREG(old.st_mode))
        return EINVAL;
    const open_file directory(::open(directory_of(file).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (directory.descriptor() < 0)
        return errno;
    temporary_file written(file);
    const bool is_made = written.is_there() && (is_new || written.take_owner(old.st_uid, old.st_gid)) &&
                         written.take_permissions(is_new ? mode_of_new_files() : old.st_mode);
    const bool is_replaced = is_made && written.write(bytes) && written.complete() && written.rename_to(file);
    return is_replaced && ::fsync(directory.descriptor()) == 0 ? 0 : errno;
}

void append_member(std::string &json, const char *name) {
    json.append(json.empty() ? "{" : ",").append("\n  \"").append(name).append("\": ");
}

const char *written(bool flag) {
    return flag ? "true" : "false";
}

} // namespace

std::string to_json(const description &d) {
    std::string json;
    append_member(json, "router-type");
    json.append(std::to_string(d.router_type));
    append_member(json, "optical-terminal-device");
    json.append(written(d.optical_terminal_device));
    append_member(json, "legacy-optical-terminal-device");
    json.append(written(d.legacy_optical_terminal_device));
    append_member(json, "flex-bins");
    json.append(written(d.flex_bins));
    append_member(json, "channels");
    const char *before = "{\n    \"";
    for (const auto &[number, name] : d.channels) {
        json.append(std::exchange(before, ",\n    \"")).append(std::to_string(number)).append("\": ");
        append_text(json, name);
    }
    json.append(d.channels.empty() ? "{}" : "\n  }");
    append_member(json, "interface-registry");
    json.append(written(d.interface_registry));
    append_member(json, "interfaces");
    before = "[\n    ";
    for (const std::string &name : d.interfaces) {
        json.append(std::exchange(before, ",\n    "));
        append_text(json, name);
    }
    json.append(d.interfaces.empty() ? "[]" : "\n  ]");
    append_member(json, "config");
    append_native(json, d.config, 1);
    append_member(json, "operational");
    append_native(json, d.operational, 1);
    append_member(json, "state-store-installed");
    json.append(written(d.state_store_installed));
    append_member(json, "state-store");
    append_state_items(json, d.state_store, 1);
    json.append("\n}\n");
    return json;
}

void write_file(const description &d, const std::string &file) {
    if (const int error = replace_file(target_of(file), to_json(d)); error != 0)
        throw description_error{file, 0, 0, std::strerror(error)};
}

} // namespace device
