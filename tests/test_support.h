// Shared helpers of the port-mapping suites: a fixture that starts every test
// from a clean substitute and a chosen card, the cage families' wiring rule
// written out independently of the library, and the assertion-report regex.
#ifndef CVN_NP_TEST_SUPPORT_H
#define CVN_NP_TEST_SUPPORT_H

#include <gtest/gtest.h>

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
inline std::string RegexEscape(const std::string &text) {
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
inline std::string ReportLine(const std::string &file, const std::string &condition) {
    return "^" + RegexEscape("platforms/corvan/lc/lc_tessel/lib/src/" + file) + ": [0-9]+ " +
           RegexEscape(condition) + " -- assertion failed\n";
}

// One module speed of the cage families: cages 2n and 2n+1 belong to NP n;
// the even cage's NP-local ports start at even_base, the odd cage's at
// odd_base; front and faceplate port are both 16 * cage + port.
struct Speed {
    const char *name;
    uint32_t ifsub_type;  // what the platform reports in the cage
    uint32_t port_type;   // port-type code of its ports
    uint32_t ports;       // ports one module carries in the mapping tables
    uint32_t even_base;
    uint32_t odd_base;
};

inline const std::vector<Speed> &Speeds() {
    static const std::vector<Speed> speeds = {
        {"100GE", k100G, CVN_NP_PORT_TYPE_100GE, 1, 117, 116},
        {"40GE", k40G, CVN_NP_PORT_TYPE_40GE, 2, 99, 96},
        {"10GE", k10G, CVN_NP_PORT_TYPE_10GE, 10, 204, 192},
    };
    return speeds;
}

inline uint32_t Front(uint32_t cage, uint32_t port) { return 16 * cage + port; }
inline uint32_t NpOfCage(uint32_t cage) { return cage / 2; }
inline uint32_t NpPort(const Speed &s, uint32_t cage, uint32_t port) {
    return (cage % 2 == 0 ? s.even_base : s.odd_base) + port;
}

// The records of a port_info list up to, not including, its end record.
inline std::vector<std::pair<uint32_t, uint32_t>> ListOf(const port_info *list) {
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

    void SetUp() override {
        GTEST_FLAG_SET(death_test_style, "threadsafe");
        cvn_np_sim_reset();
        if (card_type_ != 0) {
            cardtype = card_type_;
            ASSERT_EQ(cvn_np_lib_init(card_type_), 0u);
        }
    }

    static void Plug(uint32_t cage, uint32_t type) {
        ASSERT_EQ(cvn_np_sim_set_ifsubsys(0, cage, type), 0);
    }
    static void PlugAll(uint32_t cages, uint32_t type) {
        for (uint32_t c = 0; c < cages; ++c) Plug(c, type);
    }
    static void Fail(uint32_t cage, uint32_t status) {
        ASSERT_EQ(cvn_np_sim_fail_ifsubsys(0, cage, status), 0);
    }

  private:
    uint32_t card_type_;
};

}  // namespace cvn_test

#endif  // CVN_NP_TEST_SUPPORT_H
