// Makes devices, requests and native replies at random, takes them along their roads, and holds these to what is true
// of each: a refusal has a place and a reason, a reply is a document, a read leaves the device as it is and comes out
// the same again, an edit is done as a whole or not at all, and what a device holds can be saved.
//
//   fuzz_roads SECONDS SEED
//
// The inputs follow from the seed alone. What breaks one of these is shown, with its number: with that as a third
// argument a run takes no other. A truth more: a call of `expect` where its road ends.
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "device/json_text.h"
#include "device/store.h"
#include "made_texts.h"
#include "narrow.h"
#include "output.h"
#include "print.h"
#include "reply.h"
#include "request.h"
#include "zmf/plugin.h"
#include "zmf/session.h"

namespace {

using fuzz::made_texts;
using ocmap::format;

struct broken {
    std::string what;
};

void expect(bool is_true, const std::string &otherwise) {
    if (!is_true)
        throw broken{otherwise};
}

struct anything : json_text::visitor {
    void open_object(size_t) override {}
    void member(std::string_view, size_t) override {}
    void close_object(size_t) override {}
    void open_array(size_t) override {}
    void close_array(size_t) override {}
    void value(json_text::scalar, std::string_view, size_t) override {}
};

void ignore(zmf::output_node) {}

std::string as_json(const zmf::output_tree &reply, const ocmap::selection &told) {
    std::string text;
    ocmap::output out(text);
    ocmap::print_reply_json(reply, told, out);
    out.finish();
    try {
        anything all;
        json_text::read(text, all);
    } catch (const json_text::error &error) {
        throw broken{"a reply that is no JSON: " + error.text + "\n" + text};
    }
    return text;
}

// Not every text can stand in XML.
void print_xml(const zmf::output_tree &reply, const ocmap::selection &told) {
    std::string text;
    ocmap::output out(text);
    try {
        ocmap::print_reply_xml(reply, told, out);
    } catch (const ocmap::print_error &error) {
        return expect(!error.text.empty(), "a reply that is not printed, without a reason");
    }
    out.finish();
}

void expect_reason(const zmf::failure &failure) {
    expect(!failure.path.empty(), zmf::status_name(failure.status) + " without a place");
}

void expect_settled(zmf::session &session) {
    expect(session.imbalances() == 0, "nodes were taken off the walk record in another order");
    expect(session.hierarchy_depth() == 0, "nodes are left on the walk record");
    expect(session.stack_size() == 0, "a frame is left on the stack");
}

class roads {
public:
    roads(const zmf::plugin &plugin, made_texts &texts) : plugin_(plugin), texts_(texts) {}

    std::string shown; // what the road under way was given
    uint64_t done = 0; // roads that were taken to their end

    void run() {
        shown.clear();
        switch (texts_.below(4)) {
        case 0:
            return up();
        case 1:
            return edit();
        default:
            return read();
        }
    }

private:
    static device::description device_with(const device::description &kind, const std::string &members) {
        try {
            device::description made = device::parse(members, "device");
            made.channels = kind.channels;
            made.interfaces = kind.interfaces;
            made.state_store = kind.state_store;
            return made;
        } catch (const device::description_error &error) {
            expect(error.line != 0 && !error.text.empty(), "a description is refused without place or reason");
            return kind;
        }
    }

    device::description random_device() {
        static constexpr uint32_t router_types[] = {0, 5, 7, 18, 19};
        const std::string members =
            R"({"config":)" + texts_.native(true, true) + R"(,"operational":)" + texts_.native(false, true) + '}';
        shown += "device: " + members + '\n';
        device::description made = device_with(device::lab(), members);
        made.router_type = router_types[texts_.below(std::size(router_types))];
        made.optical_terminal_device = !texts_.one_in(3);
        made.legacy_optical_terminal_device = texts_.one_in(3);
        made.flex_bins = texts_.one_in(2);
        made.interface_registry = !texts_.one_in(6);
        made.state_store_installed = !texts_.one_in(6);
        become(made);
        return made;
    }

    void become(const device::description &made) const {
        device::install(made);
        plugin_.serve(made.flex_bins ? zmf::performance::flex_bins : zmf::performance::history);
        device::install_state_store(made, "device");
    }

    // Without a node: the request is refused.
    zmf::fixed_tree read_in(const std::string &text, ocmap::purpose what) {
        shown += "input: " + text + '\n';
        try {
            return ocmap::read_request(text, format::json, what);
        } catch (const ocmap::input_error &error) {
            expect(error.line != 0 && !error.text.empty(), "input is refused without place or reason");
            return {};
        }
    }

    // What a device says to a request, before it is narrowed. False: the walk came to a failure.
    bool ask(const zmf::fixed_tree &request, uint32_t op_type, const device::store &on, zmf::output_tree &reply) {
        zmf::session session(op_type);
        zmf::output_tree native;
        zmf::fixed_tree answer; // a failure is described by its nodes
        rcode status = plugin_.down(session, request, native);
        if (status == RC_OK) {
            answer = on.answer(native, op_type == OP_GET);
            status = plugin_.up(session, answer, reply, op_type == OP_GET);
        }
        if (status != RC_OK)
            expect_reason(session.describe(status));
        else
            expect_settled(session);
        return status == RC_OK;
    }

    static zmf::fixed_tree tops_of(const zmf::fixed_tree &request) {
        zmf::tree_builder tops;
        for (uint32_t i = 0; i < request.count(); ++i) {
            tops.open(request.tops()[i].tag, request.tops()[i].ns);
            tops.close();
        }
        return tops.finish();
    }

    static bool has_native_home(const zmf::fixed_tree &tops) {
        return std::all_of(tops.tops(), tops.tops() + tops.count(),
                           [](const zmf_datatree &top) { return std::string_view(top.tag) == "terminal-device"; });
    }

    // A walk may add keys to its request: each has one of its own.
    void read() {
        const device::store on(random_device());
        const uint32_t op_type = texts_.one_in(3) ? OP_GET_CONFIG : OP_GET;
        const std::string text = texts_.read();
        const zmf::fixed_tree request = read_in(text, ocmap::purpose::read);
        if (request.count() == 0)
            return;
        const ocmap::client_filter asked(request);
        const zmf::fixed_tree tops = tops_of(request), twin = read_in(text, ocmap::purpose::read);
        zmf::output_tree reply, again, whole;
        const bool is_done = ask(request, op_type, on, reply);
        expect(ask(twin, op_type, on, again) == is_done, "the same request is refused once");
        if (!is_done)
            return;
        const ocmap::selection told = ocmap::narrowed(reply, asked, ignore);
        const std::string shown_reply = as_json(reply, told);
        print_xml(reply, told);
        expect(as_json(again, ocmap::narrowed(again, asked, ignore)) == shown_reply,
               "another reply to the same request than:\n" + shown_reply);
        // Of state there may be more in a whole reply: what a device reports in one place is seen in another. And of
        // components: a read of what has no native home does not find out which there are.
        if (op_type == OP_GET_CONFIG && has_native_home(tops)) {
            expect(ask(tops, op_type, on, whole), "a read of all configuration is refused");
            const std::string of_whole = as_json(whole, ocmap::narrowed(whole, asked, ignore));
            expect(of_whole == shown_reply,
                   "of all configuration the reply would be\n" + of_whole + "and not\n" + shown_reply);
        }
        ++done;
    }

    void edit() {
        static constexpr uint32_t op_types[] = {OP_EDIT, OP_EDIT_CHECKED, OP_EDIT_FULL};
        const device::description before = random_device();
        device::store on(before);
        const zmf::fixed_tree request = read_in(texts_.edit(), ocmap::purpose::edit);
        if (request.count() == 0)
            return;
        zmf::session session(op_types[texts_.below(std::size(op_types))]);
        zmf::output_tree native;
        if (const rcode status = plugin_.down(session, request, native); status != RC_OK)
            return expect_reason(session.describe(status));
        expect_settled(session);
        if (const auto failure = on.apply(native)) {
            expect(!failure->error_tag.empty() && !failure->path.empty() && !failure->text.empty(),
                   "the device refuses an edit without tag, place or reason");
            return expect(on.held() == before, "a refused edit has changed the device");
        }
        expect(device::parse(device::to_json(on.held()), "saved") == on.held(), "a device that cannot be saved");
        ++done;
    }

    void up() {
        become(device::lab());
        const zmf::fixed_tree native = read_in(texts_.native(texts_.one_in(2), false), ocmap::purpose::native);
        if (native.count() == 0)
            return;
        zmf::session session(texts_.one_in(3) ? OP_GET_CONFIG : OP_GET);
        zmf::output_tree reply;
        if (const rcode status = plugin_.up(session, native, reply, true); status != RC_OK)
            return expect_reason(session.describe(status));
        expect_settled(session);
        const ocmap::selection told = ocmap::whole(reply, ignore);
        print_xml(reply, told);
        as_json(reply, told);
        ++done;
    }

    const zmf::plugin &plugin_;
    made_texts &texts_;
};

std::vector<std::string> examples() {
    std::vector<std::string> texts;
    for (const auto &entry : std::filesystem::directory_iterator(EXAMPLES))
        if (entry.path().extension() == ".json") {
            std::ifstream file(entry.path(), std::ios::binary);
            texts.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
        }
    std::ranges::sort(texts); // the file system has an order of its own
    return texts;
}

int fuzz_all(double seconds, uint64_t seed, uint64_t only) {
    const zmf::plugin plugin(OCOPTICAL_PLUGIN);
    const std::vector<std::string> good = examples();
    std::printf("seed %llu: ", static_cast<unsigned long long>(seed));
    std::fflush(stdout);
    const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    uint64_t number = only, done = 0;
    for (; only == 0 ? std::chrono::steady_clock::now() < end : number == only; ++number) {
        made_texts texts(seed * 1000003 + number, good);
        roads road(plugin, texts);
        try {
            road.run();
            done += road.done;
        } catch (const broken &truth) {
            std::fprintf(stderr, "road %llu: %s\n%s", static_cast<unsigned long long>(number), truth.what.c_str(),
                         road.shown.c_str());
            return EXIT_FAILURE;
        }
    }
    std::printf("%llu roads, %llu to their end\n", static_cast<unsigned long long>(number - only),
                static_cast<unsigned long long>(done));
    return EXIT_SUCCESS;
}

} // namespace

int main(int count, char **arguments) {
    if (count != 3 && count != 4) {
        std::fprintf(stderr, "usage: fuzz_roads SECONDS SEED [NUMBER]\n");
        return 64;
    }
    const uint64_t only = count == 4 ? std::strtoull(arguments[3], nullptr, 10) : 0;
    return fuzz_all(std::strtod(arguments[1], nullptr), std::strtoull(arguments[2], nullptr, 10), only);
}
