// Shared helpers of the port-mapping suites: a fixture that starts every test
// from a clean substitute and a chosen card, the cage families' wiring rule
// written out independently of the library, and the assertion-report regex.
#ifndef CVN_NP_TEST_SUPPORT_H
#define CVN_NP_TEST_SUPPORT_H

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "cvn_np_lib.h"
#include "cvn_np_lib_tables.h"
#include "cvn_np_sim.h"

namespace cvn_test {

constexpr uint32_t kInvalid = CVN_NP_ERR_INVALID;
constexpr uint32_t kSentinel = 0xA5A5A5A5u;
constexpr uint32_t k100G = CVN_NP_IFSUB_TYPE_100GE;
constexpr uint32_t k40G = CVN_NP_IFSUB_TYPE_40GE;
constexpr uint32_t k10G = CVN_NP_IFSUB_TYPE_10GE;
constexpr uint32_t k40GAlt = CVN_NP_IFSUB_TYPE_40GE_ALT;
constexpr uint32_t kNone = CVN_NP_IFSUB_TYPE_NONE;

// Escapes every POSIX extended-regex metacharacter of a literal text.
inline std::string RegexEscape(const std::string &text)
{
    std::string out;
    for (char ch : text) {
        if (std::string(".[]()*+?{}|^$\\").find(ch) != std::string::npos) {
            out += '\\';
        }
        out += ch;
    }
    return out;
}

// The whole report line of a failed check in source `file` with `condition`.
inline std::string ReportLine(const std::string &file, const std::string &condition)
{
    return "^" + RegexEscape("platforms/corvan/lc/lc_tessel/lib/src/" + file) + ": [0-9]+ " +
           RegexEscape(condition) + " -- assertion failed\n";
}

// One module speed of the cage families: cages 2n and 2n+1 belong to NP n;
// the even cage's NP-local ports start at even_base, the odd cage's at
// odd_base; front and faceplate port are both 16 * cage + port.
struct Speed {
    const char *name;
    uint32_t ifsub_type; // what the platform reports in the cage
    uint32_t port_type;  // port-type code of its ports
    uint32_t ports;      // ports one module carries in the mapping tables
    uint32_t even_base;
    uint32_t odd_base;
};

inline const std::vector<Speed> &Speeds()
{
    static const std::vector<Speed> speeds = {
        {"100GE", k100G, CVN_NP_PORT_TYPE_100GE, 1, 117, 116},
        {"40GE", k40G, CVN_NP_PORT_TYPE_40GE, 2, 99, 96},
        {"10GE", k10G, CVN_NP_PORT_TYPE_10GE, 10, 204, 192},
    };
    return speeds;
}

// Up to four outputs of one call, preset to the sentinel.
using Quad = std::array<uint32_t, 4>;
inline Quad Untouched() { return {kSentinel, kSentinel, kSentinel, kSentinel}; }

inline uint32_t Front(uint32_t cage, uint32_t port) { return 16 * cage + port; }
inline uint32_t NpOfCage(uint32_t cage) { return cage / 2; }
inline uint32_t NpPort(const Speed &s, uint32_t cage, uint32_t port)
{
    return (cage % 2 == 0 ? s.even_base : s.odd_base) + port;
}

// The records of a port_info list up to, not including, its end record.
inline std::vector<std::pair<uint32_t, uint32_t>> ListOf(const port_info *list)
{
    std::vector<std::pair<uint32_t, uint32_t>> out;
    for (; list != nullptr && list->port_type != CVN_NP_PORT_TYPE_END && out.size() < 16; ++list) {
        out.emplace_back(list->num_ports, list->port_type);
    }
    return out;
}
using List = std::vector<std::pair<uint32_t, uint32_t>>;

// Starts each test from a substitute with nothing plugged in and the library
// initialised explicitly for `card_type` (0: left uninitialised).
class LibTest : public ::testing::Test {
  protected:
    explicit LibTest(uint32_t card_type) : card_type_(card_type) {}

    void SetUp() override
    {
        GTEST_FLAG_SET(death_test_style, "threadsafe");
        cvn_np_sim_reset();
        if (card_type_ != 0) {
            cardtype = card_type_;
            ASSERT_EQ(cvn_np_lib_init(card_type_), 0u);
        }
    }

    static constexpr uint32_t kFails = 1; // scripts a failing query, not a type
    static constexpr uint32_t kFailStatus = 0x5A17u;

    static void Plug(uint32_t cage, uint32_t type)
    {
        if (type == kFails) {
            ASSERT_EQ(cvn_np_sim_fail_ifsubsys(0, cage, kFailStatus), 0);
        } else {
            ASSERT_EQ(cvn_np_sim_set_ifsubsys(0, cage, type), 0);
        }
    }
    static void PlugAll(uint32_t cages, uint32_t type)
    {
        for (uint32_t c = 0; c < cages; ++c)
            Plug(c, type);
    }
    // Every cage holds `others`, except NP n's two cages.
    static void PlugNp(uint32_t cages, uint32_t others, uint32_t n, uint32_t even, uint32_t odd)
    {
        cvn_np_sim_reset();
        PlugAll(cages, others);
        Plug(2 * n, even);
        Plug(2 * n + 1, odd);
    }

    // Slots 8-12 over every port of every cage, all cages holding one module.
    static void ExpectFrontPortsFollowWiring(uint32_t cages, const std::vector<Speed> &speeds)
    {
        for (const Speed &s : speeds) {
            PlugAll(cages, s.ifsub_type);
            for (uint32_t c = 0; c < cages; ++c) {
                for (uint32_t p = 0; p < s.ports; ++p) {
                    const uint32_t f = Front(c, p);
                    SCOPED_TRACE(testing::Message() << s.name << " front 0x" << std::hex << f);
                    EXPECT_EQ(cvn_np_front_port_to_np(f), NpOfCage(c));
                    EXPECT_EQ(cvn_np_front_port_to_np_port(f | 0x300), NpPort(s, c, p));
                    EXPECT_EQ(cvn_np_front_port_to_port_type(f), s.port_type);
                    Quad out = Untouched();
                    EXPECT_EQ(cvn_np_front_port_to_face_plate_port(f, &out[2], &out[3]), 0u);
                    EXPECT_EQ(out, (Quad{kSentinel, kSentinel, f, s.port_type}));
                    EXPECT_EQ(cvn_np_front_port_mapping_info(f, &out[0], &out[1], &out[2], &out[3]),
                              0u);
                    EXPECT_EQ(out, (Quad{NpOfCage(c), NpPort(s, c, p), f, s.port_type}));
                    out = Untouched();
                    EXPECT_EQ(cvn_np_front_port_mapping_info(f, nullptr, &out[1], nullptr, nullptr),
                              0u);
                    EXPECT_EQ(out, (Quad{kSentinel, NpPort(s, c, p), kSentinel, kSentinel}));
                }
            }
        }
    }

    // Slots 14 and 15 (tables only: no cage is asked) and slots 19-22.
    static void ExpectNpAndFaceplatePortsFollowWiring(uint32_t cages)
    {
        for (const Speed &s : Speeds()) {
            for (uint32_t c = 0; c < cages; ++c) {
                for (uint32_t p = 0; p < s.ports; ++p) {
                    const uint32_t n = NpOfCage(c), npp = NpPort(s, c, p), f = Front(c, p);
                    SCOPED_TRACE(testing::Message() << s.name << " cage " << c << " port " << p);
                    Quad out = Untouched();
                    EXPECT_EQ(cvn_np_info_to_fplate_porttype(n, npp, &out[0], &out[1]), 0u);
                    EXPECT_EQ(cvn_np_info_to_front_port(n, npp, &out[2]), 0u);
                    EXPECT_EQ(out, (Quad{f, s.port_type, f, kSentinel}));

                    EXPECT_EQ(cvn_faceplate_porttype_to_np(s.port_type, f | 0x200), n);
                    EXPECT_EQ(cvn_faceplate_porttype_to_np_port(s.port_type, f), npp);
                    EXPECT_EQ(cvn_faceplate_porttype_to_phys_port(s.port_type, f), f);
                    out = Untouched();
                    EXPECT_EQ(cvn_faceplate_porttype_mapping_info(s.port_type, f, &out[0], &out[1],
                                                                  &out[2]),
                              0u);
                    EXPECT_EQ(out, (Quad{n, npp, f, kSentinel}));
                }
            }
        }
        EXPECT_EQ(cvn_np_sim_ifsubsys_queries(), 0u);
    }

    // Slots 16 and 18 for NP n: `result`, and when it is 0 the first port of
    // the NP's even cage with `port_type`; outputs untouched otherwise.
    static void ExpectFirstPortOnNp(uint32_t n, uint32_t result, uint32_t port_type)
    {
        Quad out = Untouched();
        EXPECT_EQ(cvn_np_first_front_port_on_np(n, &out[0]), result);
        EXPECT_EQ(cvn_np_first_fplate_porttype_on_np(n, &out[2], &out[1]), result);
        const uint32_t f = Front(2 * n, 0);
        EXPECT_EQ(out, result == 0 ? (Quad{f, f, port_type, kSentinel}) : Untouched());
    }

    // Slot 44 over a hand-made block: first match within count, or nothing.
    static void ExpectNpPortSearchStopsAtFirstMatchWithinCount(void (*search)(
        const port_mapping_entry *const *, uint32_t, uint32_t, uint32_t *, uint32_t *, uint32_t *))
    {
        const port_mapping_entry e[] = {{0x10, 0, 5, 0x11, 1},
                                        {0x20, 0, 7, 0x21, 3},
                                        {0x30, 1, 7, 0x31, 4},
                                        {0xFF, 0xFF, 0xFF, 0xFF, 0xFF}};
        const port_mapping_entry *const entries[] = {&e[0], &e[1], &e[2], &e[3]};
        Quad out = Untouched();
        search(entries, 7, 3, &out[0], &out[1], &out[2]);
        EXPECT_EQ(out, (Quad{0x20, 0x21, 3, kSentinel}));
        out = Untouched();
        search(entries, 7, 1, &out[0], &out[1], &out[2]);
        search(entries, 0x10005, 3, &out[0], &out[1], &out[2]);
        EXPECT_EQ(out, Untouched());
        search(entries, 5, 3, nullptr, &out[1], nullptr);
        EXPECT_EQ(out, (Quad{kSentinel, 0x11, kSentinel, kSentinel}));
    }

    // The exported tables the self-test reads: each speed's entries in cage
    // order, closed by the all-0xFF entry, and its faceplate-index table.
    static void ExpectExportedTablesFollowWiring(uint32_t cages,
                                                 const port_mapping_entry *const mapping[3],
                                                 const int32_t *const index[3])
    {
        for (size_t i = 0; i < Speeds().size(); ++i) {
            const Speed &s = Speeds()[i];
            SCOPED_TRACE(s.name);
            for (uint32_t c = 0; c < cages; ++c) {
                for (uint32_t p = 0; p < 16; ++p) {
                    const bool port = p < s.ports;
                    EXPECT_EQ(index[i][Front(c, p)], port ? int32_t(c * s.ports + p) : 255);
                    if (!port)
                        continue;
                    const port_mapping_entry &e = mapping[i][c * s.ports + p];
                    EXPECT_EQ((std::array<uint32_t, 5>{e.phys_front_port, e.np, e.np_port,
                                                       e.fplate_port, e.port_type}),
                              (std::array<uint32_t, 5>{Front(c, p), NpOfCage(c), NpPort(s, c, p),
                                                       Front(c, p), s.port_type}));
                }
            }
            const port_mapping_entry &end = mapping[i][cages * s.ports];
            EXPECT_EQ((std::array<uint32_t, 5>{end.phys_front_port, end.np, end.np_port,
                                               end.fplate_port, end.port_type}),
                      (std::array<uint32_t, 5>{0xFF, 0xFF, 0xFF, 0xFF, 0xFF}));
        }
    }

  private:
    uint32_t card_type_;
};

} // namespace cvn_test

#endif // CVN_NP_TEST_SUPPORT_H
