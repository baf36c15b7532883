// Starting the host and waiting for it.
#include "host.h"

#include <array>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <pty.h>
#include <spawn.h>
#include <sstream>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace road {
namespace {

class scratch_directory {
public:
    scratch_directory() {
        std::string name = (std::filesystem::temp_directory_path() / "ocmap-test-XXXXXX").string();
        if (!::mkdtemp(name.data()))
            throw std::runtime_error("no scratch directory");
        path_ = name;
    }
    ~scratch_directory() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    scratch_directory(const scratch_directory &) = delete;
    scratch_directory &operator=(const scratch_directory &) = delete;

    std::string file(const std::string &name) const { return (path_ / name).string(); }

private:
    std::filesystem::path path_;
};

const scratch_directory &scratch() {
    static const scratch_directory directory;
    return directory;
}

std::string content_of(const std::string &name) {
    std::ostringstream content;
    content << std::ifstream(name, std::ios::binary).rdbuf();
    return content.str();
}

class file_actions {
public:
    file_actions() { ::posix_spawn_file_actions_init(&actions_); }
    ~file_actions() { ::posix_spawn_file_actions_destroy(&actions_); }
    file_actions(const file_actions &) = delete;
    file_actions &operator=(const file_actions &) = delete;

    void open(int descriptor, const std::string &name, int flags) {
        ::posix_spawn_file_actions_addopen(&actions_, descriptor, name.c_str(), flags, 0600);
    }
    void duplicate(int from, int to) { ::posix_spawn_file_actions_adddup2(&actions_, from, to); }
    const posix_spawn_file_actions_t *get() const { return &actions_; }

private:
    posix_spawn_file_actions_t actions_{};
};

int pipe_without_reader() {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe");
    ::close(ends[0]);
    return ends[1];
}

// What stands on a terminal until the last of its programs has ended.
std::string read_terminal(int descriptor) {
    std::string text;
    std::array<char, 4096> piece{};
    for (;;) {
        const ssize_t count = ::read(descriptor, piece.data(), piece.size());
        if (count <= 0) // an error when nobody has the other end any longer
            return text;
        text.append(piece.data(), static_cast<size_t>(count));
    }
}

class terminal {
public:
    explicit terminal(bool is_wanted) {
        if (is_wanted && ::openpty(&own_, &other_, nullptr, nullptr, nullptr) != 0)
            throw std::runtime_error("no terminal");
    }
    ~terminal() {
        give_away();
        if (own_ >= 0)
            ::close(own_);
    }
    terminal(const terminal &) = delete;
    terminal &operator=(const terminal &) = delete;

    int other() const { return other_; }
    void give_away() {
        if (other_ >= 0)
            ::close(other_);
        other_ = -1;
    }
    std::string read() const { return read_terminal(own_); }

private:
    int own_ = -1, other_ = -1;
};

std::vector<char *> pointers_to(std::vector<std::string> &texts) {
    std::vector<char *> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string &text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

std::vector<std::string> environment_with(const std::vector<std::string> &more) {
    std::vector<std::string> all = more;
    for (char **each = environ; *each != nullptr; ++each)
        all.emplace_back(*each);
    return all;
}

outcome wait_for(pid_t child) {
    int state = 0;
    struct rusage used {};
    ::wait4(child, &state, 0, &used);
    outcome result;
    result.status = WIFEXITED(state) ? WEXITSTATUS(state) : 1000 + WTERMSIG(state);
    result.peak_bytes = static_cast<uint64_t>(used.ru_maxrss) * 1024;
    return result;
}

} // namespace

outcome run_host(const std::vector<std::string> &arguments, const wiring &wires) {
    const std::string out = scratch().file("stdout"), err = scratch().file("stderr");
    const int write_only = O_WRONLY | O_CREAT | O_TRUNC;
    const int pipe_end = wires.is_output_closed ? pipe_without_reader() : -1;
    terminal screen(wires.is_terminal);
    file_actions actions;
    actions.open(STDIN_FILENO, wires.input, O_RDONLY);
    if (wires.is_terminal)
        actions.duplicate(screen.other(), STDOUT_FILENO);
    else if (wires.is_output_closed)
        actions.duplicate(pipe_end, STDOUT_FILENO);
    else
        actions.open(STDOUT_FILENO, wires.output.empty() ? out : wires.output, write_only);
    if (wires.is_terminal)
        actions.duplicate(screen.other(), STDERR_FILENO);
    else
        actions.open(STDERR_FILENO, err, write_only);

    std::vector<std::string> words{OCMAP_HOST};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<std::string> environment = environment_with(wires.environment);
    pid_t child = 0;
    if (const int error = ::posix_spawn(&child, OCMAP_HOST, actions.get(), nullptr, pointers_to(words).data(),
                                        pointers_to(environment).data()))
        throw std::runtime_error(std::string("the host does not start: ") + std::strerror(error));
    if (pipe_end >= 0)
        ::close(pipe_end);
    screen.give_away();
    const std::string seen = wires.is_terminal ? screen.read() : "";
    outcome result = wait_for(child);
    if (wires.is_terminal) {
        result.out = seen;
        return result;
    }
    if (wires.output.empty() && !wires.is_output_closed)
        result.out = content_of(out);
    result.err = content_of(err);
    return result;
}

std::string scratch_file(const std::string &name, std::string_view content) {
    return scratch_file(name, content, "", 0, "");
}

std::string scratch_file(const std::string &name, std::string_view head, std::string_view piece, size_t count,
                         std::string_view tail) {
    std::string path = scratch().file(name);
    std::ofstream file(path, std::ios::binary);
    file << head;
    for (size_t written = 0; written < count; ++written)
        file << piece;
    file << tail;
    if (!file.flush())
        throw std::runtime_error("cannot write " + path);
    return path;
}

} // namespace road
