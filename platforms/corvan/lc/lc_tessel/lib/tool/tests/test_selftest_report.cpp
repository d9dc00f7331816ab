// Runs the self-test program as a user would (options, the substitute's
// environment) and checks its report, line by line where the rules fix it.
// Expected values come from the cards' wiring: brisca has 8 cages and 4 NPs,
// fenna 6 cages and 3 NPs; cages 2n and 2n+1 belong to NP n; a cage carries
// 1, 2 or 10 ports at 100GE, 40GE, 10GE; front port = faceplate port =
// 16 * cage + port; NP-local ports 117/99+p/204+p on an NP's even cage and
// 116/96+p/192+p on its odd cage.
#include <gtest/gtest.h>

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace {

struct Report {
    std::string out;
    std::string err;
    int exit_code = -1; // -1 when killed by a signal
    int signal = 0;
    std::vector<std::string> lines;
};

std::string Slurp(int fd)
{
    std::string text;
    char buf[4096];
    lseek(fd, 0, SEEK_SET);
    for (ssize_t n; (n = read(fd, buf, sizeof buf)) > 0;)
        text.append(buf, static_cast<size_t>(n));
    close(fd);
    return text;
}

int TempFd()
{
    char name[] = "/tmp/cvn_np_selftest_XXXXXX";
    int fd = mkstemp(name);
    unlink(name);
    return fd;
}

// Runs `exe` with `args` in an environment of our own: nothing of the
// caller's CVN_NP_SIM_* comes through, only `env` and the sanitizers' knobs.
Report Start(const std::string &exe, const std::vector<std::string> &args,
             const std::vector<std::string> &env = {})
{
    std::vector<std::string> envs = {"PATH=/usr/bin:/bin"};
    for (const char *knob : {"ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS"}) {
        if (const char *v = getenv(knob))
            envs.push_back(std::string(knob) + "=" + v);
    }
    envs.insert(envs.end(), env.begin(), env.end());
    std::vector<std::string> argv_s = {exe};
    argv_s.insert(argv_s.end(), args.begin(), args.end());
    std::vector<char *> argv, envp;
    for (auto &a : argv_s)
        argv.push_back(a.data());
    argv.push_back(nullptr);
    for (auto &e : envs)
        envp.push_back(e.data());
    envp.push_back(nullptr);

    int out_fd = TempFd(), err_fd = TempFd();
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, out_fd, 1);
    posix_spawn_file_actions_adddup2(&actions, err_fd, 2);
    pid_t pid = 0;
    Report run;
    int rc = posix_spawn(&pid, exe.c_str(), &actions, nullptr, argv.data(), envp.data());
    posix_spawn_file_actions_destroy(&actions);
    EXPECT_EQ(rc, 0) << "cannot start " << exe;
    int status = 0;
    if (rc == 0)
        waitpid(pid, &status, 0);
    if (WIFEXITED(status))
        run.exit_code = WEXITSTATUS(status);
    if (WIFSIGNALED(status))
        run.signal = WTERMSIG(status);
    run.out = Slurp(out_fd);
    run.err = Slurp(err_fd);
    std::istringstream in(run.out);
    for (std::string line; std::getline(in, line);)
        run.lines.push_back(line);
    return run;
}

Report Selftest(const std::vector<std::string> &args, const std::vector<std::string> &env = {})
{
    return Start(CVN_NP_SELFTEST_PATH, args, env);
}

bool Has(const std::vector<std::string> &lines, const std::string &line)
{
    return std::find(lines.begin(), lines.end(), line) != lines.end();
}

size_t CountPrefix(const std::vector<std::string> &lines, const std::string &prefix)
{
    return std::count_if(lines.begin(), lines.end(),
                         [&](const std::string &l) { return l.rfind(prefix, 0) == 0; });
}

// One test run of the report: its lines from "Starting" to "Completed", and
// per group the lines after its header.
struct Block {
    std::vector<std::string> lines;
    std::vector<std::string> order; // group names in report order
    std::map<std::string, std::vector<std::string>> groups;
};

bool IsHex8(const std::string &s)
{
    return s.size() == 8 && s.find_first_not_of("0123456789abcdef") == std::string::npos;
}

// The group name of a header line "<name> board type 0x%08x", or "".
std::string HeaderName(const std::string &line)
{
    const std::string mark = " board type 0x";
    size_t at = line.find(mark);
    if (at == std::string::npos || at == 0 || !IsHex8(line.substr(at + mark.size())))
        return "";
    std::string name = line.substr(0, at);
    if (name.find_first_not_of("abcdefghijklmnopqrstuvwxyz_0123456789") != std::string::npos) {
        return "";
    }
    return name;
}

std::vector<Block> Blocks(const std::vector<std::string> &lines)
{
    std::vector<Block> blocks;
    std::string group;
    for (const auto &line : lines) {
        if (line.rfind("Starting ", 0) == 0) {
            blocks.emplace_back();
            group.clear();
        }
        if (blocks.empty())
            continue;
        Block &b = blocks.back();
        b.lines.push_back(line);
        if (line.rfind("Completed ", 0) == 0) {
            group.clear();
        } else if (!HeaderName(line).empty()) {
            group = HeaderName(line);
            b.order.push_back(group);
        } else if (!group.empty()) {
            b.groups[group].push_back(line);
        }
    }
    return blocks;
}

bool IsCase(const std::string &l)
{
    auto ends = [&](const std::string &s) {
        return l.size() >= s.size() && l.compare(l.size() - s.size(), s.size(), s) == 0;
    };
    return l.rfind("  ", 0) == 0 && (ends(" ok.") || ends(" ERROR."));
}

size_t Cases(const std::vector<std::string> &g)
{
    return std::count_if(g.begin(), g.end(), IsCase);
}

size_t Errors(const std::vector<std::string> &g)
{
    return std::count_if(g.begin(), g.end(), [](const std::string &l) {
        return IsCase(l) && l.size() > 7 && l.compare(l.size() - 7, 7, " ERROR.") == 0;
    });
}

const std::vector<std::string> kGroupOrder = {"test_cvn_np_lib_init",
                                              "test_cvn_np_lib_testcard",
                                              "test_nplib_card_info",
                                              "test_cvn_np_port_info_get",
                                              "test_cvn_np_subslot_info_get",
                                              "test_cvn_np_port_info_subslot",
                                              "test_cvn_np_front_port_to_np",
                                              "test_cvn_np_front_port_to_np_port",
                                              "test_cvn_np_front_port_to_port_type",
                                              "test_cvn_np_front_port_to_face_plate_port",
                                              "test_cvn_np_front_port_mapping_info",
                                              "test_cvn_np_info_num_local_ports",
                                              "test_cvn_np_info_to_front_port",
                                              "test_cvn_np_info_to_fplate_porttype",
                                              "test_cvn_np_first_front_port_on_np",
                                              "test_cvn_np_first_fplate_porttype_on_np",
                                              "test_cvn_faceplate_porttype_to_np",
                                              "test_cvn_faceplate_porttype_to_np_port",
                                              "test_cvn_faceplate_porttype_to_phys_port",
                                              "test_cvn_faceplate_porttype_mapping_info",
                                              "test_cvn_np_complex_to_subslot",
                                              "test_cvn_np_complex_to_np",
                                              "test_cvn_np_set_if_subsys_type",
                                              "test_cvn_np_to_cpu_port_map"};

// Number of case lines of every counted group for a card with `cages` cages
// and `nps` NPs (two cages per NP, one subslot, 1 + 2 + 10 ports per cage
// over the three speeds).
std::map<std::string, size_t> CaseCounts(size_t cages, size_t nps)
{
    const size_t ports = cages * 13;
    return {{"test_cvn_np_port_info_get", 3 * cages},
            {"test_cvn_np_front_port_to_np", ports},
            {"test_cvn_np_front_port_to_np_port", ports},
            {"test_cvn_np_front_port_to_port_type", ports},
            {"test_cvn_np_front_port_to_face_plate_port", ports},
            {"test_cvn_np_front_port_mapping_info", ports},
            {"test_cvn_np_info_num_local_ports", 3 * nps},
            {"test_cvn_np_info_to_front_port", nps * 2 * 13},
            {"test_cvn_np_info_to_fplate_porttype", nps * 2 * 13},
            {"test_cvn_np_first_front_port_on_np", 3 * nps},
            {"test_cvn_np_first_fplate_porttype_on_np", 3 * nps},
            {"test_cvn_faceplate_porttype_to_np", ports},
            {"test_cvn_faceplate_porttype_to_np_port", ports},
            {"test_cvn_faceplate_porttype_to_phys_port", ports},
            {"test_cvn_faceplate_porttype_mapping_info", ports},
            {"test_cvn_np_complex_to_subslot", nps},
            {"test_cvn_np_complex_to_np", 2 * nps}};
}

// Checks one run block's structure: group order, headers, case counts,
// summaries consistent with the ERROR lines, and the Completed line's sum.
void CheckBlock(const Block &b, const std::string &card_hex, size_t cages, size_t nps,
                size_t expected_errors)
{
    ASSERT_EQ(b.order, kGroupOrder);
    for (const auto &line : b.lines) {
        if (line.find(" board type 0x") != std::string::npos) {
            EXPECT_NE(line.find("board type 0x" + card_hex), std::string::npos) << line;
        }
    }
    size_t total = 0;
    for (const auto &[name, count] : CaseCounts(cages, nps)) {
        const auto &g = b.groups.at(name);
        EXPECT_EQ(Cases(g), count) << name;
        size_t errors = Errors(g);
        total += errors;
        std::string summary =
            errors == 0 ? "  " + name + " passed."
                        : "  " + name + " has " + std::to_string(errors) + " failed cases.";
        EXPECT_EQ(g.back(), summary) << name;
    }
    for (const char *name : {"test_cvn_np_subslot_info_get", "test_cvn_np_port_info_subslot",
                             "test_cvn_np_set_if_subsys_type", "test_cvn_np_to_cpu_port_map"}) {
        EXPECT_EQ(b.groups.at(name),
                  std::vector<std::string>{"  " + std::string(name) + " not implemented yet"});
    }
    // Only the first two front-port groups print the library's encoding.
    EXPECT_EQ(CountPrefix(b.groups.at("test_cvn_np_front_port_to_np"), "subslot "), cages * 13);
    EXPECT_EQ(CountPrefix(b.groups.at("test_cvn_np_front_port_to_np_port"), "subslot "),
              cages * 13);
    EXPECT_EQ(CountPrefix(b.groups.at("test_cvn_np_front_port_to_port_type"), "subslot "), 0u);
    EXPECT_EQ(total, expected_errors);
    EXPECT_EQ(b.lines.back(), "Completed nplib tests for card 0x" + card_hex + " with " +
                                  std::to_string(expected_errors) + " error.");
}

// ---- Coverage run -------------------------------------------------------

TEST(SelftestCoverage, RunsFennaThenBriscaAndCountsOnlyBriscasPerCageNpCounts)
{
    Report r = Selftest({});
    EXPECT_EQ(r.exit_code, 0);
    EXPECT_EQ(r.err, "");
    ASSERT_EQ(CountPrefix(r.lines, "Starting "), 2u);
    EXPECT_EQ(r.lines.front(), "Starting coverage test for FENNA(0x003d0267).");
    EXPECT_EQ(r.lines[1], "test_cvn_np_lib_init board type 0x003d0267");
    // Every group of fenna agrees with its tables; brisca answers the NP
    // count per cage (1, 2, 10) where the group expects per NP (2, 4, 20):
    // 4 NPs x 3 speeds = 12 failures.
    auto blocks = Blocks(r.lines);
    ASSERT_EQ(blocks.size(), 2u);
    EXPECT_EQ(blocks[1].lines.front(), "Starting coverage test for BRISCA(0x003d0274).");
    // Each Completed line is followed by an empty line.
    EXPECT_EQ(blocks[0].lines.back(), "");
    blocks[0].lines.pop_back();
    EXPECT_EQ(r.lines.back(), "");
    blocks[1].lines.pop_back();
    CheckBlock(blocks[0], "003d0267", 6, 3, 0);
    CheckBlock(blocks[1], "003d0274", 8, 4, 12);
}

TEST(SelftestCoverage, KnownCasesPrintTheirExactLines)
{
    Report r = Selftest({"-c"});
    auto blocks = Blocks(r.lines);
    ASSERT_EQ(blocks.size(), 2u);
    const auto &fenna = blocks[0].lines;
    const auto &brisca = blocks[1].lines;
    for (const char *l :
         {"  board np info:", "    num_complex       = 3", "    num_cage          = 6",
          "    ver_minor         = c", "    max_fpport_10g    = 60", "    port_cage_10g     = 10",
          "    max_of_ifsubsys_per_subslot = 6", "  testing cvn_np_how_many: 3 = 3, ok!",
          "  testing cvn_np_chip_how_many: 3 = 3, ok!",
          "  testing cvn_np_version_get: 5.c = 5.c ok!",
          "  40g subslot, cage (0, 5) port info (2, 3) = (2, 3) ok.",
          "subslot 0 ifsubsys 5 type 0x00010002 port 9 phys_front_port 0x00000059",
          "  10ge front port (0, 5, 0x59) np 2 = 2 ok.",
          "  10ge front port (0, 5, 0x59) np_port 201 = 201 ok.",
          "  100ge subslot, front port (0, 0x10) type 4 = 4 ok.",
          "  40ge subslot, front port (0, 0x41) fpport, type (0x41, 3) = (0x41, 3) ok.",
          // the ok line of the mapping group shows the code in decimal
          "  100ge subslot, front port (0, 16) np, np_port, fpport, type (0, 116, 0x10, 4) = "
          "(0, 116, 0x10, 4) ok.",
          "  10ge np 2 num of ports 20 = 20 ok.", "  40ge np 1 num of ports 4 = 4 ok.",
          "  10ge np, cage, port (1, 1, 195) front port 51 = 51 ok.",
          "  40ge np, cage, port (2, 0, 100) face_port, type (65, 3) = (65, 3) ok.",
          "  100ge np 1 first front port 0x20 = 0x20 ok.",
          "  10ge np 2 first face port, type (64, 1) = (64, 1) ok.",
          "  40ge face port (0, 5, 0x51) np 2 = 2 ok.",
          "  40ge face port (0, 5, 0x51) np port 97 = 97 ok.",
          "  10ge face port (0, 3, 0x37) front port 0x37 = 0x37 ok.",
          "  40ge face port (0, 5, 81) np, np port, front port (2, 97, 0x51) = (2, 97, 0x51) ok.",
          "  np 2 subslot 0 = 0 ok.", "  ingress np complex 2 np 2 = 2 ok.",
          "  egress np complex 2 np 2 = 2 ok."}) {
        EXPECT_TRUE(Has(fenna, l)) << "fenna: " << l;
    }
    for (const char *l :
         {"    num_cage          = 8", "    max_fpport_10g    = 80",
          "  testing cvn_np_how_many: 4 = 4, ok!",
          "  10ge subslot, front port (0, 121) np, np_port, fpport, type (3, 201, 0x79, 1) = "
          "(3, 201, 0x79, 1) ok.",
          "  100ge front port (0, 6, 0x60) np_port 117 = 117 ok.",
          "  40ge np, cage, port (3, 1, 97) front port 113 = 113 ok.",
          "  10ge np 3 first front port 0x60 = 0x60 ok.",
          "  100ge face port (0, 7, 112) np, np port, front port (3, 116, 0x70) = "
          "(3, 116, 0x70) ok.",
          "  egress np complex 3 np 3 = 3 ok.", "  100ge np 0 num of ports 1 != 2 ERROR.",
          "  100ge np 3 num of ports 1 != 2 ERROR.", "  40ge np 1 num of ports 2 != 4 ERROR.",
          "  10ge np 2 num of ports 10 != 20 ERROR.",
          "  test_cvn_np_info_num_local_ports has 12 failed cases."}) {
        EXPECT_TRUE(Has(brisca, l)) << "brisca: " << l;
    }
    // The mapping group's ok lines never show the code in hex.
    EXPECT_EQ(CountPrefix(brisca, "  10ge subslot, front port (0, 0x79) np, np_port"), 0u);
}

TEST(SelftestCoverage, ReportDoesNotDependOnWhatThePlatformReportsInTheCages)
{
    // The groups ask the explicit forms that take the cage and its type, so
    // neither empty cages nor other modules change a line.  The board run
    // asks the substitute for the card and so reads its module script too
    // (a malformed script is refused).
    Report plain = Selftest({"-b"});
    std::string all10g;
    for (int c = 0; c < 8; ++c) {
        all10g += (c ? ",0:" : "0:") + std::to_string(c) + "=0x10002";
    }
    Report modules = Selftest({"-b"}, {"CVN_NP_SIM_IFSUBSYS=" + all10g});
    Report mixed =
        Selftest({"-b"}, {"CVN_NP_SIM_IFSUBSYS=0:0=0x10000,0:3=0x10001,0:5=0x10003,0:7=77"});
    Report malformed = Selftest({"-b"}, {"CVN_NP_SIM_IFSUBSYS=0:0"});
    EXPECT_EQ(malformed.exit_code, 2);
    EXPECT_EQ(modules.exit_code, 0);
    EXPECT_EQ(CountPrefix(plain.lines, "Completed "), 1u);
    // Addresses move from run to run; every other line must be the same.
    auto stable = [](const Report &r) {
        std::vector<std::string> kept;
        for (const auto &l : r.lines) {
            if (l.find(" = 0x") == std::string::npos || l.rfind("test_cvn_np_lib_init ", 0) != 0) {
                kept.push_back(l);
            }
        }
        return kept;
    };
    EXPECT_EQ(stable(plain).size(), plain.lines.size() - 16);
    EXPECT_TRUE(stable(modules) == stable(plain));
    EXPECT_TRUE(stable(mixed) == stable(plain));
}

// The whole report of one coverage card, rebuilt from the report's line
// formats and loops and the card's wiring; the 16 address lines are left
// as "" (their values move from run to run).
std::string Fmt(const char *format, ...) __attribute__((format(printf, 1, 2)));
std::string Fmt(const char *format, ...)
{
    char buf[512];
    va_list ap;
    va_start(ap, format);
    vsnprintf(buf, sizeof buf, format, ap);
    va_end(ap);
    return buf;
}

struct Speed {
    const char *word, *short_word;
    unsigned ifsub_type, port_type_code, port_cage, np_port_even, np_port_odd;
};
const Speed kSpeeds[] = {{"100ge", "100g", 0x10000, 4, 1, 117, 116},
                         {"40ge", "40g", 0x10001, 3, 2, 99, 96},
                         {"10ge", "10g", 0x10002, 1, 10, 204, 192}};

std::vector<std::string> ExpectedCard(const char *starting, unsigned card, int cages,
                                      bool per_cage_np_count)
{
    const int nps = cages / 2;
    const int ports_10g = cages * 10;
    std::vector<std::string> out;
    auto header = [&](const char *name) { out.push_back(Fmt("%s board type 0x%08x", name, card)); };
    auto summary = [&](const char *name, int failed) {
        out.push_back(failed == 0 ? Fmt("  %s passed.", name)
                                  : Fmt("  %s has %d failed cases.", name, failed));
    };
    auto np_port = [](const Speed &sp, int c, int p) {
        return static_cast<int>((c % 2 == 0 ? sp.np_port_even : sp.np_port_odd) + p);
    };
    auto front_loop = [&](const char *name, bool encoding,
                          const std::function<std::string(const Speed &, int, int, int)> &line) {
        header(name);
        for (const Speed &sp : kSpeeds) {
            for (int c = 0; c < cages; ++c) {
                for (int p = 0; p < static_cast<int>(sp.port_cage); ++p) {
                    int code = (p & 0xF) | ((c * 16) & 0xFF);
                    if (encoding) {
                        out.push_back(Fmt("subslot %d ifsubsys %d type 0x%08x port %d "
                                          "phys_front_port 0x%08x",
                                          0, c, sp.ifsub_type, p, 16 * c + p));
                    }
                    out.push_back(line(sp, c, p, code));
                }
            }
        }
        summary(name, 0);
    };
    auto not_implemented = [&](const char *name) {
        header(name);
        out.push_back(Fmt("  %s not implemented yet", name));
    };

    out.push_back(Fmt(starting, card));
    header("test_cvn_np_lib_init");
    for (int i = 0; i < 16; ++i)
        out.push_back("");
    header("test_cvn_np_lib_testcard");

    header("test_nplib_card_info");
    out.push_back("  board np info:");
    const int fields[] = {1, 0,     nps,       nps,       1,         cages,     2,
                          5, 'c',   9216,      cages,     2 * cages, ports_10g, 1,
                          8, cages, 2 * cages, ports_10g, 1,         2,         10};
    const char *formats[] = {
        "    sw_version        = %d", "    sw_status         = %d", "    num_np            = %d",
        "    num_complex       = %d", "    np_per_complex    = %d", "    num_cage          = %d",
        "    cage_per_complex  = %d", "    ver_major         = %d", "    ver_minor         = %c",
        "    max_mtu           = %d", "    max_fpport_100g   = %d", "    max_fpport_40g    = %d",
        "    max_fpport_10g    = %d", "    num_subslot       = %d", "    max_port_cage     = %d",
        "    port_subslot_100g = %d", "    port_subslot_40g  = %d", "    port_subslot_10g  = %d",
        "    port_cage_100g    = %d", "    port_cage_40g     = %d", "    port_cage_10g     = %d"};
    for (size_t i = 0; i < 21; ++i)
        out.push_back(Fmt(formats[i], fields[i]));
    out.push_back(""); // the last field line ends in an empty line
    out.push_back(""); // and the subslot block starts with one
    out.push_back("  board subslot info:");
    out.push_back(Fmt("    num_of_subslots       = %d", 1));
    out.push_back(Fmt("    max_of_ifsubsys_per_subslot = %d", cages));
    out.push_back(Fmt("    max_ports_per_subslot = %d", 10));
    out.push_back(Fmt("  testing cvn_np_how_many: %d = %d, ok!", nps, nps));
    out.push_back(Fmt("  testing cvn_np_chip_how_many: %d = %d, ok!", nps, nps));
    out.push_back(Fmt("  testing cvn_np_version_get: %d.%c = %d.%c ok!", 5, 'c', 5, 'c'));

    header("test_cvn_np_port_info_get");
    for (const Speed &sp : kSpeeds) {
        for (int c = 0; c < cages; ++c) {
            out.push_back(Fmt("  %s subslot, cage (%d, %d) port info (%d, %d) = (%d, %d) ok.",
                              sp.short_word, 0, c, sp.port_cage, sp.port_type_code, sp.port_cage,
                              sp.port_type_code));
        }
    }
    summary("test_cvn_np_port_info_get", 0);
    not_implemented("test_cvn_np_subslot_info_get");
    not_implemented("test_cvn_np_port_info_subslot");

    front_loop("test_cvn_np_front_port_to_np", true, [&](const Speed &sp, int c, int, int code) {
        return Fmt("  %s front port (%d, %d, 0x%x) np %d = %d ok.", sp.word, 0, c, code, c / 2,
                   c / 2);
    });
    front_loop("test_cvn_np_front_port_to_np_port", true,
               [&](const Speed &sp, int c, int p, int code) {
                   return Fmt("  %s front port (%d, %d, 0x%x) np_port %d = %d ok.", sp.word, 0, c,
                              code, np_port(sp, c, p), np_port(sp, c, p));
               });
    front_loop("test_cvn_np_front_port_to_port_type", false,
               [&](const Speed &sp, int, int, int code) {
                   return Fmt("  %s subslot, front port (%d, 0x%x) type %d = %d ok.", sp.word, 0,
                              code, sp.port_type_code, sp.port_type_code);
               });
    front_loop("test_cvn_np_front_port_to_face_plate_port", false,
               [&](const Speed &sp, int c, int p, int code) {
                   return Fmt("  %s subslot, front port (%d, 0x%x) fpport, type (0x%x, %d) = "
                              "(0x%x, %d) ok.",
                              sp.word, 0, code, 16 * c + p, sp.port_type_code, 16 * c + p,
                              sp.port_type_code);
               });
    front_loop(
        "test_cvn_np_front_port_mapping_info", false, [&](const Speed &sp, int c, int p, int code) {
            return Fmt("  %s subslot, front port (%d, %d) np, np_port, fpport, type "
                       "(%d, %d, 0x%x, %d) = (%d, %d, 0x%x, %d) ok.",
                       sp.word, 0, code, c / 2, np_port(sp, c, p), 16 * c + p, sp.port_type_code,
                       c / 2, np_port(sp, c, p), 16 * c + p, sp.port_type_code);
        });

    header("test_cvn_np_info_num_local_ports");
    for (const Speed &sp : kSpeeds) {
        for (int n = 0; n < nps; ++n) {
            int expected = 2 * static_cast<int>(sp.port_cage);
            int got = per_cage_np_count ? static_cast<int>(sp.port_cage) : expected;
            out.push_back(
                got != expected
                    ? Fmt("  %s np %d num of ports %d != %d ERROR.", sp.word, n, got, expected)
                    : Fmt("  %s np %d num of ports %d = %d ok.", sp.word, n, got, got));
        }
    }
    summary("test_cvn_np_info_num_local_ports", per_cage_np_count ? 3 * nps : 0);

    auto np_walk = [&](const char *name, bool fplate) {
        header(name);
        for (const Speed &sp : kSpeeds) {
            for (int n = 0; n < nps; ++n) {
                for (int k = 0; k < 2; ++k) {
                    for (int p = 0; p < static_cast<int>(sp.port_cage); ++p) {
                        int c = 2 * n + k, q = np_port(sp, c, p), f = 16 * c + p;
                        out.push_back(
                            fplate
                                ? Fmt("  %s np, cage, port (%d, %d, %d) face_port, type "
                                      "(%d, %d) = (%d, %d) ok.",
                                      sp.word, n, k, q, f, sp.port_type_code, f, sp.port_type_code)
                                : Fmt("  %s np, cage, port (%d, %d, %d) front port %d = %d ok.",
                                      sp.word, n, k, q, f, f));
                    }
                }
            }
        }
        summary(name, 0);
    };
    np_walk("test_cvn_np_info_to_front_port", false);
    np_walk("test_cvn_np_info_to_fplate_porttype", true);

    auto first_port = [&](const char *name, bool fplate) {
        header(name);
        for (const Speed &sp : kSpeeds) {
            for (int n = 0; n < nps; ++n) {
                int f = 16 * (2 * n);
                out.push_back(
                    fplate ? Fmt("  %s np %d first face port, type (%d, %d) = "
                                 "(%d, %d) ok.",
                                 sp.word, n, f, sp.port_type_code, f, sp.port_type_code)
                           : Fmt("  %s np %d first front port 0x%x = 0x%x ok.", sp.word, n, f, f));
            }
        }
        summary(name, 0);
    };
    first_port("test_cvn_np_first_front_port_on_np", false);
    first_port("test_cvn_np_first_fplate_porttype_on_np", true);

    front_loop("test_cvn_faceplate_porttype_to_np", false,
               [&](const Speed &sp, int c, int, int code) {
                   return Fmt("  %s face port (%d, %d, 0x%x) np %d = %d ok.", sp.word, 0, c, code,
                              c / 2, c / 2);
               });
    front_loop("test_cvn_faceplate_porttype_to_np_port", false,
               [&](const Speed &sp, int c, int p, int code) {
                   return Fmt("  %s face port (%d, %d, 0x%x) np port %d = %d ok.", sp.word, 0, c,
                              code, np_port(sp, c, p), np_port(sp, c, p));
               });
    front_loop("test_cvn_faceplate_porttype_to_phys_port", false,
               [&](const Speed &sp, int c, int p, int code) {
                   return Fmt("  %s face port (%d, %d, 0x%x) front port 0x%x = 0x%x ok.", sp.word,
                              0, c, code, 16 * c + p, 16 * c + p);
               });
    front_loop("test_cvn_faceplate_porttype_mapping_info", false,
               [&](const Speed &sp, int c, int p, int code) {
                   return Fmt("  %s face port (%d, %d, %d) np, np port, front port (%d, %d, 0x%x) "
                              "= (%d, %d, 0x%x) ok.",
                              sp.word, 0, c, code, c / 2, np_port(sp, c, p), 16 * c + p, c / 2,
                              np_port(sp, c, p), 16 * c + p);
               });

    header("test_cvn_np_complex_to_subslot");
    for (int n = 0; n < nps; ++n)
        out.push_back(Fmt("  np %d subslot %d = 0 ok.", n, 0));
    summary("test_cvn_np_complex_to_subslot", 0);
    header("test_cvn_np_complex_to_np");
    for (int c = 0; c < nps; ++c) {
        out.push_back(Fmt("  ingress np complex %d np %d = %d ok.", c, c, c));
        out.push_back(Fmt("  egress np complex %d np %d = %d ok.", c, c, c));
    }
    summary("test_cvn_np_complex_to_np", 0);
    not_implemented("test_cvn_np_set_if_subsys_type");
    not_implemented("test_cvn_np_to_cpu_port_map");
    out.push_back(Fmt("Completed nplib tests for card 0x%08x with %d error.", card,
                      per_cage_np_count ? 3 * nps : 0));
    out.push_back("");
    return out;
}

TEST(SelftestCoverage, WholeReportLineByLine)
{
    Report r = Selftest({});
    std::vector<std::string> expected =
        ExpectedCard("Starting coverage test for FENNA(0x%08x).", 0x3D0267, 6, false);
    std::vector<std::string> brisca =
        ExpectedCard("Starting coverage test for BRISCA(0x%08x).", 0x3D0274, 8, true);
    expected.insert(expected.end(), brisca.begin(), brisca.end());
    ASSERT_EQ(r.lines.size(), expected.size());
    for (size_t i = 0; i < expected.size(); ++i) {
        if (expected[i].empty() && i > 0 && r.lines[i].rfind("test_cvn_np_lib_init ", 0) == 0) {
            // An address line: its own test checks names, line numbers, digits.
            EXPECT_NE(r.lines[i].find(" = 0x"), std::string::npos) << "line " << i + 1;
            continue;
        }
        EXPECT_EQ(r.lines[i], expected[i]) << "line " << i + 1;
    }
    EXPECT_EQ(r.out.back(), '\n');
}

// ---- Set-up ---------------------------------------------------------------

TEST(SelftestSetup, PrintsSixteenAddressLinesFromConsecutiveSourceLines)
{
    const std::vector<std::string> names = {
        "test_np_info",         "test_port_info_100ge",  "test_port_map_100ge",
        "test_phys_map_100ge",  "test_fplate_map_100ge", "test_np_port_map_100ge",
        "test_port_info_40ge",  "test_port_map_40ge",    "test_phys_map_40ge",
        "test_fplate_map_40ge", "test_np_port_map_40ge", "test_port_info_10ge",
        "test_port_map_10ge",   "test_phys_map_10ge",    "test_fplate_map_10ge",
        "test_np_port_map_10ge"};
    Report r = Selftest({});
    auto blocks = Blocks(r.lines);
    ASSERT_EQ(blocks.size(), 2u);
    std::vector<std::vector<std::string>> values(2);
    std::vector<int> first_line(2);
    for (size_t b = 0; b < 2; ++b) {
        const auto &lines = blocks[b].groups.at("test_cvn_np_lib_init");
        ASSERT_EQ(lines.size(), 16u);
        for (size_t i = 0; i < 16; ++i) {
            // "test_cvn_np_lib_init <line> <name> = 0x<8 hex digits>"
            int line = 0, used = 0;
            char name[64] = "", hex[16] = "";
            ASSERT_EQ(sscanf(lines[i].c_str(), "test_cvn_np_lib_init %d %63s = 0x%15s%n", &line,
                             name, hex, &used),
                      3)
                << lines[i];
            EXPECT_EQ(static_cast<size_t>(used), lines[i].size()) << lines[i];
            EXPECT_TRUE(IsHex8(hex)) << lines[i];
            if (i == 0)
                first_line[b] = line;
            EXPECT_EQ(line, first_line[b] + static_cast<int>(i)) << lines[i];
            EXPECT_EQ(name, names[i]);
            values[b].push_back(hex);
        }
    }
    EXPECT_EQ(first_line[0], first_line[1]); // the same statements print both cards
    // Sixteen distinct tables per card, and fenna's are not brisca's.
    for (size_t b = 0; b < 2; ++b) {
        auto v = values[b];
        std::sort(v.begin(), v.end());
        EXPECT_EQ(std::unique(v.begin(), v.end()), v.end());
    }
    for (size_t i = 0; i < 16; ++i)
        EXPECT_NE(values[0][i], values[1][i]) << names[i];
}

// ---- Options ----------------------------------------------------------------

TEST(SelftestOptions, HelpPrintsOnlyTheUsageText)
{
    const std::string usage = std::string("\nUsage: ") + CVN_NP_SELFTEST_PATH +
                              " [options]\n  -B | -b : board test\n"
                              "  -C | -c : covarage test[default]\n"
                              "  -H | -h : display usage help\n";
    for (const auto &args : std::vector<std::vector<std::string>>{
             {"-h"}, {"-H"}, {"-b", "-h"}, {"-B", "-H"}, {"-c", "-x", "-h", "-b"}}) {
        Report r = Selftest(args, {"CVN_NP_SIM_CARD_TYPE=0x3D0277"});
        EXPECT_EQ(r.out, usage) << args.front();
        EXPECT_EQ(r.exit_code, 0);
    }
}

TEST(SelftestOptions, TheLastModeOptionDecidesAndUnknownOptionsAreIgnored)
{
    const std::string coverage = "Starting coverage test for FENNA(0x003d0267).";
    const std::string board = "Starting board test for card 0x003d026a.";
    const std::vector<std::pair<std::vector<std::string>, std::string>> cases = {
        {{"-b", "-c"}, coverage}, {{"-c", "-b"}, board}, {{"-B"}, board},     {{"-C"}, coverage},
        {{"-x"}, coverage},       {{"-x", "-b"}, board}, {{"-bC"}, coverage}, {{"-Cb"}, board}};
    for (const auto &[args, first] : cases) {
        Report r = Selftest(args, {"CVN_NP_SIM_CARD_TYPE=0x3D026A"});
        ASSERT_FALSE(r.lines.empty());
        EXPECT_EQ(r.lines.front(), first) << args.front();
        EXPECT_EQ(r.exit_code, 0);
        EXPECT_EQ(CountPrefix(r.lines, "Starting "), first == coverage ? 2u : 1u);
    }
}

// ---- Board run ----------------------------------------------------------------

TEST(SelftestBoard, ChecksTheCardThePlatformReports)
{
    struct Card {
        std::string env, hex;
        size_t cages, nps, errors;
    };
    for (const Card &card : {Card{"CVN_NP_SIM_CARD_TYPE=0x3D026A", "003d026a", 6, 3, 0},
                             Card{"CVN_NP_SIM_CARD_TYPE=3998405", "003d02c5", 8, 4, 12},
                             Card{"", "003d0274", 8, 4, 12}}) {
        Report r = Selftest({"-b"}, card.env.empty() ? std::vector<std::string>{}
                                                     : std::vector<std::string>{card.env});
        EXPECT_EQ(r.exit_code, 0);
        auto blocks = Blocks(r.lines);
        ASSERT_EQ(blocks.size(), 1u) << card.hex;
        EXPECT_EQ(blocks[0].lines.front(), "Starting board test for card 0x" + card.hex + ".");
        EXPECT_EQ(blocks[0].lines.back(), "");
        blocks[0].lines.pop_back();
        CheckBlock(blocks[0], card.hex, card.cages, card.nps, card.errors);
    }
}

TEST(SelftestBoard, CardWithoutExpectedValuesStopsAfterOneLine)
{
    // Between two brisca ranges, a tolvar card the library serves, below
    // the first known type, and far outside.
    for (const std::string &hex :
         std::vector<std::string>{"003d0277", "003d0296", "003d0266", "12345678"}) {
        Report r = Selftest({"-b"}, {"CVN_NP_SIM_CARD_TYPE=0x" + hex});
        EXPECT_EQ(r.exit_code, 0) << hex;
        EXPECT_EQ(r.err, "") << hex;
        ASSERT_EQ(r.lines.size(), 3u) << r.out;
        EXPECT_EQ(r.lines[0], "Starting board test for card 0x" + hex + ".");
        EXPECT_EQ(r.lines[1], "test_cvn_np_lib_init board type 0x" + hex);
        EXPECT_EQ(r.lines[2], "No expected values for card 0x" + hex +
                                  ": the self-test knows fenna and brisca cards only.");
    }
}

TEST(SelftestBoard, FourCageBriscaCardEndsInTheLibrarysCageAssertion)
{
    // Checked against the eight-cage tables, the run reaches cage 4 in the
    // port-information group and the library stops it; every line printed
    // before the abort is still in the report.
    Report r = Selftest({"-b"}, {"CVN_NP_SIM_CARD_TYPE=0x3D0278"});
    EXPECT_EQ(r.signal, SIGABRT);
    EXPECT_EQ(CountPrefix(r.lines, "test_cvn_np_lib_init "), 17u);
    ASSERT_FALSE(r.lines.empty());
    EXPECT_EQ(r.lines.back(), "  100g subslot, cage (0, 3) port info (1, 4) = (1, 4) ok.");
    EXPECT_TRUE(Has(r.lines, "  testing cvn_np_how_many: 4 = 4, ok!"));
    // "<path>: <line> <condition> -- assertion failed", nothing else.
    const std::string path = "platforms/corvan/lc/lc_tessel/lib/src/cvn_np_lib_brisca_4p.cpp: ";
    const std::string tail =
        " ifsubsys_num < brisca_4p_card_np_info->num_cage -- assertion failed\n";
    ASSERT_GT(r.err.size(), path.size() + tail.size()) << r.err;
    EXPECT_EQ(r.err.substr(0, path.size()), path) << r.err;
    EXPECT_EQ(r.err.substr(r.err.size() - tail.size()), tail) << r.err;
    std::string line = r.err.substr(path.size(), r.err.size() - path.size() - tail.size());
    EXPECT_EQ(line.find_first_not_of("0123456789"), std::string::npos) << r.err;
}

// ---- ERROR forms, against a library that is wrong in known places ------------

TEST(SelftestErrorLines, EveryGroupPrintsItsErrorFormAndCountsIt)
{
    Report r = Start(CVN_NP_SELFTEST_SKEWED_PATH, {});
    EXPECT_EQ(r.exit_code, 0);
    auto blocks = Blocks(r.lines);
    ASSERT_EQ(blocks.size(), 2u);
    // One skewed case in each of 17 counted groups, two in the complex-to-NP
    // group; brisca's NP count fails in all 12 cases anyway.
    for (auto &b : blocks)
        b.lines.pop_back();
    CheckBlock(blocks[0], "003d0267", 6, 3, 18);
    CheckBlock(blocks[1], "003d0274", 8, 4, 29);
    const std::vector<std::string> both = {
        "  40g subslot, cage (0, 2) port info (3, 3) != (2, 3) ERROR.",
        "  100ge front port (0, 1, 0x10) np 1 != 0 ERROR.",
        "  100ge front port (0, 1, 0x10) np_port 117 != 116 ERROR.",
        "  100ge subslot, front port (0, 0x10) type 5 != 4 ERROR.",
        "  100ge subslot, front port (0, 0x10) fpport, type (0x11, 5) != (0x10, 4) ERROR.",
        // the ERROR line of the mapping group shows the code in hex
        "  100ge subslot, front port (0, 0x10) np, np_port, fpport, type (1, 117, 0x11, 5) != "
        "(0, 116, 0x10, 4) ERROR.",
        "  40ge np, cage, port (1, 1, 97) front port 50 != 49 ERROR.",
        "  40ge np, cage, port (1, 1, 97) face_port, type (50, 4) != (49, 3) ERROR.",
        "  10ge np 2 first front port 0x41 != 0x40 ERROR.",
        "  10ge np 2 first face port, type (65, 2) != (64, 1) ERROR.",
        "  40ge face port (0, 5, 0x51) np 3 != 2 ERROR.",
        "  40ge face port (0, 5, 0x51) np port 98 != 97 ERROR.",
        "  40ge face port (0, 5, 0x51) front port 0x52 != 0x51 ERROR.",
        "  40ge face port (0, 5, 81) np, np port, front port (3, 98, 0x52) != (2, 97, 0x51) "
        "ERROR.",
        "  np 1 subslot 1 != 0 ERROR.", "  ingress np complex 2 np 3 != 2 ERROR.",
        "  egress np complex 2 np 4 != 2 ERROR."};
    for (const auto &l : both) {
        EXPECT_TRUE(Has(blocks[0].lines, l)) << "fenna: " << l;
        EXPECT_TRUE(Has(blocks[1].lines, l)) << "brisca: " << l;
    }
    EXPECT_TRUE(Has(blocks[0].lines, "  10ge np 2 num of ports 21 != 20 ERROR."));
    EXPECT_TRUE(Has(blocks[1].lines, "  10ge np 2 num of ports 11 != 20 ERROR."));
    // The card summary's checks print ERROR! and count nothing.
    for (const char *l :
         {"  testing cvn_np_how_many: 4 != 3, ERROR!", "  testing cvn_np_chip_how_many: 3 = 3, ok!",
          "  testing cvn_np_version_get: cant get NP version. ERROR!"}) {
        EXPECT_TRUE(Has(blocks[0].groups.at("test_nplib_card_info"), l)) << l;
    }
    for (const char *l :
         {"  testing cvn_np_how_many: 4 = 4, ok!", "  testing cvn_np_chip_how_many: 5 != 4, ERROR!",
          "  testing cvn_np_version_get: 5.d != 5.c ERROR!"}) {
        EXPECT_TRUE(Has(blocks[1].groups.at("test_nplib_card_info"), l)) << l;
    }
}

} // namespace
