// Shared helpers of the port-mapping suites: a fixture that starts every test
// from a clean substitute and a chosen card, and the assertion-report regex.
#ifndef CVN_NP_TEST_SUPPORT_H
#define CVN_NP_TEST_SUPPORT_H

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>

#include "cvn_np_lib.h"
#include "cvn_np_lib_tables.h"
#include "cvn_np_sim.h"

namespace cvn_test {

constexpr uint32_t kInvalid = CVN_NP_ERR_INVALID;
constexpr uint32_t kSentinel = 0xA5A5A5A5u; // an output the call must leave alone
constexpr uint32_t kFailStatus = 0x5A17u;   // what a scripted failing query returns

// The whole report line of a failed check in source `file` (relative to the
// library's src/) with `condition`, as an extended regex.
inline std::string ReportLine(const std::string &file, const std::string &condition)
{
    auto literal = [](const std::string &text) {
        std::string out;
        for (char ch : text) {
            if (std::string(".[]()*+?{}|^$\\").find(ch) != std::string::npos)
                out += '\\';
            out += ch;
        }
        return out;
    };
    return "^" + literal("platforms/corvan/lc/lc_tessel/lib/src/" + file) + ": [0-9]+ " +
           literal(condition) + " -- assertion failed\n";
}

// Starts each test from a substitute with nothing plugged in and the library
// initialised explicitly for `card_type` (0: left as the last test left it).
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

    // What (subslot, cage or instance) reports; kFails scripts a failing query.
    static constexpr uint32_t kFails = 1;
    static void Plug(uint32_t subslot, uint32_t ifsubsys, uint32_t type)
    {
        if (type == kFails)
            ASSERT_EQ(cvn_np_sim_fail_ifsubsys(subslot, ifsubsys, kFailStatus), 0);
        else
            ASSERT_EQ(cvn_np_sim_set_ifsubsys(subslot, ifsubsys, type), 0);
    }

  private:
    uint32_t card_type_;
};

// Runs `check` with `slot` (a slot of an operation table or a current
// record) replaced by `with`, then puts the family's own back.
template <class T> void Swap(T &slot, T with, const std::function<void()> &check)
{
    const T own = slot;
    slot = with;
    check();
    slot = own;
}

} // namespace cvn_test

#endif // CVN_NP_TEST_SUPPORT_H
