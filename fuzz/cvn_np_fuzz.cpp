// Every public function of every family on a scripted platform.  Input: card
// byte (bit 7: lazy init), key count, per key (subslot, cage or instance,
// answer), then per call: function, NULL-output mask, four arguments.  A call
// returns with stderr untouched or ends in one assertion report; anything
// else traps.  Without CVN_NP_LIBFUZZER, main replays a folder's files.
#include <setjmp.h>
#include <signal.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "cvn_np_lib.h"
#include "cvn_np_sim.h"

extern "C" void __sanitizer_set_death_callback(void (*)(void)) __attribute__((weak));

namespace {

struct X {
    uint32_t a, b, c, d, *o, *p, *q, *r, *s;
};
const uint32_t kCards[] = {0x3D0267, 0x3D026C, 0x3D0274, 0x3D02C4, 0x3D0278, 0x3D02BD,
                           0x3D028C, 0x3D02D9, 0x3D0296, 0x3D02D8, 0x3D02C1, 0x3D02DA,
                           0x3D02C2, 0x3D02C3, 0x3D02C6, 0x3D02C7, 0x3D02D2, 0x3D0290};
// Platform answers (the first 21) and argument edges.
const uint32_t kWords[] = {~0u,     0x10000, 0x10001,    0x10002,    0x10003, 0x10021, 0x10030,
                           0x10040, 0x10041, 565,        566,        567,     568,     570,
                           571,     573,     574,        575,        576,     577,     578,
                           0xFF,    0x100,   0x7FFFFFFF, 0x80000000, 0xFFFE,  0xBF,    0x3F};
const uint8_t *g_in, *g_end;
uint8_t next() { return g_in < g_end ? *g_in++ : 0; }
uint32_t arg() // mostly a byte, else a word of the table or four raw bytes
{
    const uint8_t sel = next();
    uint32_t v = sel < 0xC0 ? next() : kWords[sel % std::size(kWords)];
    for (int i = 0; sel == 0xFF && i < 4; ++i)
        v = (i ? v << 8 : 0) | next();
    return v;
}

int g_capture = -1, g_saved = -1;
sigjmp_buf g_jump;
void dump_capture() // stderr back, with what it captured
{
    char buf[4096];
    const ssize_t n = g_saved < 0 ? 0 : pread(g_capture, buf, sizeof buf, 0);
    if (g_saved >= 0 && (dup2(g_saved, 2) < 0 || (n > 0 && write(2, buf, size_t(n)) < 0)))
        _exit(3);
}
void need(bool ok, const char *what)
{
    if (!ok) {
        dump_capture();
        std::fprintf(stderr, "cvn_np_fuzz: %s\n", what);
        signal(SIGABRT, SIG_DFL), __builtin_trap();
    }
}

// The 46 slots in order, then the functions outside the table.
using Call = void (*)(X &);
const Call kCalls[] = {
    [](X &) { cvn_np_version_get(); },
    [](X &) { cvn_max_mtu(); },
    [](X &) { cvn_np_how_many(); },
    [](X &) { cvn_np_chip_how_many(); },
    [](X &) { cvn_np_port_info_get(); },
    [](X &) { cvn_np_subslot_info_get(); },
    [](X &x) { cvn_np_port_info_subslot(x.a); },
    [](X &x) { cvn_np_port_info_from_subslot_ifsubinst(x.a, x.b); },
    [](X &x) { cvn_np_front_port_to_np(x.a); },
    [](X &x) { cvn_np_front_port_to_np_port(x.a); },
    [](X &x) { cvn_np_front_port_to_port_type(x.a); },
    [](X &x) { cvn_np_front_port_to_face_plate_port(x.a, x.o, x.p); },
    [](X &x) { cvn_np_front_port_mapping_info(x.a, x.o, x.p, x.q, x.r); },
    [](X &x) { cvn_np_info_num_local_ports(x.a); },
    [](X &x) { cvn_np_info_to_front_port(x.a, x.b, x.o); },
    [](X &x) { cvn_np_info_to_fplate_porttype(x.a, x.b, x.o, x.p); },
    [](X &x) { cvn_np_first_front_port_on_np(x.a, x.o); },
    [](X &x) { cvn_np_first_phys_port_on_np(x.a, x.o); },
    [](X &x) { cvn_np_first_fplate_porttype_on_np(x.a, x.o, x.p); },
    [](X &x) { cvn_faceplate_porttype_to_np(x.a, x.b); },
    [](X &x) { cvn_faceplate_porttype_to_np_port(x.a, x.b); },
    [](X &x) { cvn_faceplate_porttype_to_phys_port(x.a, x.b); },
    [](X &x) { cvn_faceplate_porttype_mapping_info(x.a, x.b, x.o, x.p, x.q); },
    [](X &x) { cvn_np_complex_to_subslot(x.a); },
    [](X &x) { cvn_np_complex_to_subslot_list(x.a, x.o, x.p); },
    [](X &x) { cvn_np_complex_to_np(x.a, x.b); },
    [](X &x) { cvn_np_set_if_subsys_type(x.a, x.b); },
    [](X &x) { cvn_np_subslot_to_np_list(x.a, x.o, x.p); },
    [](X &x) { cvn_np_to_cpu_port_map(x.a); },
    [](X &x) { cvn_np_lib_set_subslot_phy_port(x.a, x.b); },
    [](X &x) { cvn_np_lib_set_subslot_ifsubinst_ifsubinst_port(x.a, x.b, x.c); },
    [](X &x) { cvn_np_lib_get_subslot(x.a); },
    [](X &x) { cvn_np_lib_get_subslot_port(x.a); },
    [](X &x) { cvn_np_lib_get_port(x.a); },
    [](X &x) { cvn_np_lib_get_ifsubinst(x.a); },
    [](X &x) { cvn_np_lib_get_ifsubinst_port(x.a); },
    [](X &x) { cvn_np_lib_get_phys_port_tuple45(x.a, x.b, x.c, x.d); },
    [](X &x) { aux_cvn_np_front_port_to_ifsubsys(x.a, x.o, x.p, x.q); },
    [](X &x) { aux_cvn_np_port_info_get(x.a, x.b, x.c); },
    [](X &x) { aux_cvn_np_front_port_to_mapping_info(x.a, x.b, x.c, x.o, x.p, x.q, x.r); },
    [](X &x) { aux_cvn_np_info_num_local_ports(x.a, x.b, x.c); },
    [](X &x) { aux_cvn_np_info_to_mapping_info(x.a, x.b, x.c, x.o, x.p, x.q); },
    [](X &x) { aux_cvn_np_first_port_on_np(x.a, x.b, x.c, x.o, x.p, x.q); },
    [](X &x) { aux_cvn_faceplate_to_mapping_info(x.a, x.b, x.c, x.o, x.p, x.q); },
    [](X &x) { // a caller's list: NULL, or a NULL entry and one entry
        const port_mapping_entry e{uint16_t(x.a), 1, uint16_t(x.b), 2, x.d};
        const port_mapping_entry *const l[] = {nullptr, &e};
        aux_np_port_to_mapping_info(x.s ? l : nullptr, x.b, x.c % 3, x.o, x.p, x.q);
    },
    [](X &x) { aux_cvn_np_front_port_to_ifsubinst(x.a, x.o); },
    [](X &x) { // the low 8 bits stored, 0 or INVALID; without np INVALID, nothing stored
        uint8_t np = 0x5A;
        const uint32_t r = cvn_np_id_validate(x.a, x.o ? &np : nullptr);
        need(np == (x.o ? x.a & 0xFF : 0x5A) && (r == 0 ? x.o != nullptr : r == CVN_NP_ERR_INVALID),
             "cvn_np_id_validate");
    },
    [](X &) { need(cvn_np_unsupported() == CVN_NP_ERR_INVALID, "cvn_np_unsupported"); },
    [](X &x) { cvn_np_card_family(x.a); },
    [](X &x) { need(cvn_np_lib_init(x.a) == 0, "init returns 0"); }, // last: first call only
};

// One line "<src>/cvn_np_lib*.cpp: <digits> <text> -- assertion failed".
bool is_report(const std::string &out)
{
    const std::string head = "platforms/corvan/lc/lc_tessel/lib/src/cvn_np_lib";
    const std::string tail = " -- assertion failed\n";
    const size_t cpp = out.find(".cpp: "), line = cpp + 6, sp = out.find(' ', line);
    return out.starts_with(head) && out.ends_with(tail) && out.find('\n') + 1 == out.size() &&
           cpp != out.npos &&
           out.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789_", head.size()) == cpp &&
           sp != out.npos && sp > line && out.find_first_not_of("0123456789", line) == sp &&
           sp + 1 + tail.size() < out.size();
}

// Runs one call with stderr captured; false when it ended in the report.
bool guarded(Call call, X &x)
{
    need(ftruncate(g_capture, 0) == 0 && lseek(g_capture, 0, SEEK_SET) == 0 &&
             (g_saved = dup(2)) >= 0 && dup2(g_capture, 2) == 2,
         "capture");
    const auto old = signal(SIGABRT, [](int) { siglongjmp(g_jump, 1); });
    const bool aborted = sigsetjmp(g_jump, 1) != 0;
    if (!aborted)
        call(x);
    signal(SIGABRT, old);
    char out[512] = {};
    const ssize_t n = pread(g_capture, out, sizeof out - 1, 0);
    dup2(g_saved, 2), close(g_saved), g_saved = -1;
    need(aborted ? n > 0 && is_report(std::string(out, size_t(n))) : n == 0,
         aborted ? "an abort without exactly one report line" : "a normal return wrote to stderr");
    return !aborted;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (g_capture < 0 && (g_capture = memfd_create("cvn_np_fuzz_stderr", 0)) >= 0 &&
        __sanitizer_set_death_callback) // a sanitizer report goes out, not into the capture
        __sanitizer_set_death_callback(dump_capture);
    g_in = data, g_end = data + size;
    const uint8_t card = next();
    X x{};
    x.a = kCards[(card & 0x7F) % std::size(kCards)];
    cvn_np_sim_reset();
    for (int keys = next() % 12; keys > 0; --keys) {
        const uint32_t subslot = next() % 4, cage = next(), answer = next() % 22;
        const uint32_t key = cage & 0x80 ? CVN_NP_SIM_ANY : cage % 16;
        answer == 21 ? cvn_np_sim_fail_ifsubsys(subslot, key, 0x5A17)
                     : cvn_np_sim_set_ifsubsys(subslot, key, kWords[answer]);
    }
    if (card & 0x80) // the first call initialises the library
        cvn_np_sim_set_card_type(x.a), initialized = 0, card_np_api = nullptr;
    else if (cardtype = x.a;
             guarded(kCalls[std::size(kCalls) - 1], x) != bool(cvn_np_card_family(x.a)))
        need(false, "cvn_np_card_family is NULL exactly where init asserts");
    else if (!cvn_np_card_family(x.a))
        return 0;
    uint32_t outs[5][2];
    for (int calls = 0; calls < 64 && g_in < g_end; ++calls) {
        const uint8_t fn = next(), mask = next();
        x.a = arg(), x.b = arg(), x.c = arg(), x.d = arg();
        uint32_t **outputs[] = {&x.o, &x.p, &x.q, &x.r, &x.s};
        for (int i = 0; i < 5; ++i)
            *outputs[i] = mask >> i & 1 ? nullptr : outs[i];
        if (!guarded(kCalls[fn % (std::size(kCalls) - 1)], x))
            return 0; // the process would have ended here
    }
    return 0;
}

#ifndef CVN_NP_LIBFUZZER
int main(int argc, char **argv) // replays every file of the folder argv[1]
{
    int runs = 0;
    for (const auto &f : std::filesystem::directory_iterator(argc > 1 ? argv[1] : ".")) {
        std::ifstream s(f.path(), std::ios::binary);
        const std::string b{std::istreambuf_iterator<char>(s), {}};
        runs += LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(b.data()), b.size()) + 1;
    }
    std::printf("cvn_np_fuzz: %d inputs replayed\n", runs);
    return runs > 0 ? 0 : 1;
}
#endif
