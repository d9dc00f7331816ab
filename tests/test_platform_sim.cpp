// The platform substitute: environment parsing, scripted answers and
// failures, counters and reset.
#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include "cvn_np_sim.h"

namespace {

constexpr uint32_t kAny = CVN_NP_SIM_ANY;
constexpr uint32_t kNone = CVN_NP_IFSUB_TYPE_NONE;
constexpr uint32_t kJunk = 0xA5A5A5A5;

// {status, the four words of info}; info starts as junk so that an
// untouched or half-filled answer shows.
using Reply = std::array<uint32_t, 5>;
Reply ask(uint32_t subslot, uint32_t ifsubsys)
{
    ifsubsys_info info{kJunk, kJunk, kJunk, kJunk};
    const ifsubsys_id id{0, subslot, ifsubsys};
    const uint32_t status = rva_ifsubsys_get_info(&id, &info);
    return {status, info.platform_word0, info.type, info.platform_word2, info.platform_word3};
}

uint32_t type_of(uint32_t subslot, uint32_t ifsubsys)
{
    const Reply r = ask(subslot, ifsubsys);
    return r[0] == 0 ? r[2] : 0xDEAD;
}

std::string regex_quote(const std::string &s)
{
    std::string out;
    for (char c : s) {
        if (std::strchr(".[]{}()\\*+?|^$", c) != nullptr)
            out += '\\';
        out += c;
    }
    return out;
}

class PlatformSim : public ::testing::Test {
  protected:
    void SetUp() override
    {
        unsetenv("CVN_NP_SIM_CARD_TYPE");
        unsetenv("CVN_NP_SIM_IFSUBSYS");
        cvn_np_sim_reset();
    }
    void TearDown() override { SetUp(); }
};

TEST_F(PlatformSim, EnvironmentAcceptsHexDecimalOctalAndAny)
{
    const struct {
        const char *card;
        uint32_t expected;
    } cards[] = {{"0x3D0275", 0x3D0275},
                 {"4001397", 4001397},
                 {"0X1f", 31},
                 {"017", 15},
                 {"0", 0},
                 {"4294967295", 0xFFFFFFFF},
                 {"", CVN_NP_SIM_DEFAULT_CARD_TYPE}};
    for (const auto &c : cards) {
        cvn_np_sim_reset();
        setenv("CVN_NP_SIM_CARD_TYPE", c.card, 1);
        cvn_np_sim_load_environment();
        EXPECT_EQ(platform_get_my_card_type(), c.expected) << '"' << c.card << '"';
    }
    setenv("CVN_NP_SIM_IFSUBSYS", "0:3=0x10002,1:any=574, 1:0=0x10000 ,\t2:010=7,0:3=9", 1);
    cvn_np_sim_load_environment();
    EXPECT_EQ(type_of(0, 3), 9u); // the later item for a key counts
    EXPECT_EQ(type_of(1, kAny), 574u);
    EXPECT_EQ(type_of(1, 0), 0x10000u);
    EXPECT_EQ(type_of(2, 8), 7u);
    EXPECT_EQ(type_of(1, 1), kNone); // "any" is its own key, not a fallback
}

TEST_F(PlatformSim, MalformedEnvironmentExitsWithOneLineNamingTheItem)
{
    const auto rejected = [](const char *var, const std::string &value, const std::string &item) {
        EXPECT_EXIT((setenv(var, value.c_str(), 1), cvn_np_sim_load_environment()),
                    ::testing::ExitedWithCode(2),
                    "^cvn_np_sim: " + std::string(var) + ": [^\n]*\"" + regex_quote(item) +
                        "\"[^\n]*\n$")
            << var << "=" << value;
    };
    for (const char *item : {"0:x=5", "0:1", "1=2", ":1=2", "0:1=", "0:1=0x", "0:1=+1", "0:-1=1",
                             "0:1=4294967296", "0:ANY=1", "0:1=08", "0 :1=2"})
        rejected("CVN_NP_SIM_IFSUBSYS", std::string("1:2=3,") + item, item);
    rejected("CVN_NP_SIM_IFSUBSYS", "0:1=2,,1:2=3", "");
    rejected("CVN_NP_SIM_IFSUBSYS", "0:1=2,", "");
    for (const char *value : {"abc", "-1", " 5", "0x1g", "0x100000000"})
        rejected("CVN_NP_SIM_CARD_TYPE", value, value);
}

// A fresh process where nothing (not even a fixture) has called the
// substitute yet, so the first call is the one that reads the environment.
TEST(PlatformSimFirstCall, ReadsEnvironmentOnceAndResetDoesNotReapplyIt)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT((setenv("CVN_NP_SIM_CARD_TYPE", "0x30", 1),
                 setenv("CVN_NP_SIM_IFSUBSYS", "3:4=5", 1),
                 std::exit(platform_get_my_card_type() == 0x30 && type_of(3, 4) == 5 ? 0 : 1)),
                ::testing::ExitedWithCode(0), "");
    EXPECT_EXIT((setenv("CVN_NP_SIM_IFSUBSYS", "3:4=5", 1), cvn_np_sim_reset(),
                 std::exit(type_of(3, 4) == kNone ? 0 : 1)),
                ::testing::ExitedWithCode(0), "");
}

TEST_F(PlatformSim, AnswersUnknownScriptedAndFailingKeys)
{
    EXPECT_EQ(ask(7, 7), (Reply{0, 0, kNone, 0, 0}));
    ASSERT_EQ(cvn_np_sim_set_ifsubsys(1, 2, 0x10041), 0);
    EXPECT_EQ(ask(1, 2), (Reply{0, 0, 0x10041, 0, 0}));
    EXPECT_EQ(cvn_np_sim_fail_ifsubsys(1, 2, 0), -1);
    EXPECT_EQ(type_of(1, 2), 0x10041u); // a refused failure changes nothing
    ASSERT_EQ(cvn_np_sim_fail_ifsubsys(1, 2, 0x463B0216), 0);
    EXPECT_EQ(ask(1, 2), (Reply{0x463B0216, kJunk, kJunk, kJunk, kJunk}));
    ASSERT_EQ(cvn_np_sim_set_ifsubsys(1, 2, 3), 0); // an answer replaces the failure
    EXPECT_EQ(type_of(1, 2), 3u);

    cvn_np_sim_fail_all(5);
    EXPECT_EQ(ask(1, 2), (Reply{5, kJunk, kJunk, kJunk, kJunk}));
    EXPECT_EQ(ask(7, 7)[0], 5u);
    cvn_np_sim_fail_all(0);
    EXPECT_EQ(type_of(1, 2), 3u);

    const ifsubsys_id id{0, 1, 2};
    const ifsubsys_id before = id;
    ifsubsys_info info;
    rva_ifsubsys_get_info(&id, &info);
    EXPECT_EQ(std::memcmp(&id, &before, sizeof id), 0);
    EXPECT_NE(rva_ifsubsys_get_info(nullptr, &info), 0u);
    EXPECT_NE(rva_ifsubsys_get_info(&id, nullptr), 0u);
}

TEST_F(PlatformSim, LoadIsAllOrNothingAndTableHoldsMaxEntries)
{
    char error[128];
    EXPECT_EQ(cvn_np_sim_load_ifsubsys("0:1=5,0:x=1", error, sizeof error), -1);
    EXPECT_NE(std::strstr(error, "\"0:x=1\""), nullptr) << error;
    EXPECT_EQ(type_of(0, 1), kNone);
    char tiny[8];
    EXPECT_EQ(cvn_np_sim_load_ifsubsys("0:x=1", tiny, sizeof tiny), -1);
    EXPECT_EQ(std::strlen(tiny), sizeof tiny - 1);
    EXPECT_EQ(cvn_np_sim_load_ifsubsys("bad", nullptr, 0), -1);

    for (uint32_t i = 0; i + 1 < CVN_NP_SIM_MAX_ENTRIES; ++i)
        ASSERT_EQ(cvn_np_sim_set_ifsubsys(i, kAny, i), 0);
    EXPECT_EQ(cvn_np_sim_load_ifsubsys("900:1=1,901:1=1", error, sizeof error), -1);
    EXPECT_NE(std::strstr(error, "\"901:1=1\""), nullptr) << error;
    EXPECT_EQ(type_of(900, 1), kNone);
    EXPECT_EQ(cvn_np_sim_load_ifsubsys("900:1=1,0:any=44", error, sizeof error), 0);
    EXPECT_EQ(cvn_np_sim_set_ifsubsys(901, 1, 1), -1);
    EXPECT_EQ(cvn_np_sim_fail_ifsubsys(901, 1, 1), -1);
    EXPECT_EQ(cvn_np_sim_set_ifsubsys(900, 1, 2), 0); // a known key still fits
    EXPECT_EQ(type_of(900, 1), 2u);
    EXPECT_EQ(type_of(0, kAny), 44u);
}

TEST_F(PlatformSim, CountsQueriesAndResetForgetsEverything)
{
    cvn_np_sim_set_card_type(0x1234);
    cvn_np_sim_set_ifsubsys(0, 0, 1);
    cvn_np_sim_fail_ifsubsys(0, 1, 9);
    cvn_np_sim_fail_all(7);
    EXPECT_EQ(platform_get_my_card_type(), 0x1234u);
    for (int i = 0; i < 3; ++i)
        ask(0, 0);
    rva_ifsubsys_get_info(nullptr, nullptr);
    EXPECT_EQ(cvn_np_sim_card_type_queries(), 1u);
    EXPECT_EQ(cvn_np_sim_ifsubsys_queries(), 4u);

    cvn_np_sim_reset();
    EXPECT_EQ(cvn_np_sim_card_type_queries(), 0u);
    EXPECT_EQ(cvn_np_sim_ifsubsys_queries(), 0u);
    EXPECT_EQ(platform_get_my_card_type(), CVN_NP_SIM_DEFAULT_CARD_TYPE);
    EXPECT_EQ(type_of(0, 0), kNone);
    EXPECT_EQ(type_of(0, 1), kNone);
}

TEST_F(PlatformSim, ManyReadersSeeTheScriptedTable)
{
    cvn_np_sim_load_ifsubsys("0:0=10,0:1=11,1:any=12", nullptr, 0);
    std::vector<std::thread> readers;
    std::atomic<int> wrong{0};
    for (int t = 0; t < 8; ++t)
        readers.emplace_back([&wrong] {
            for (int i = 0; i < 2000; ++i)
                if (type_of(0, 0) != 10 || type_of(0, 1) != 11 || type_of(1, kAny) != 12)
                    ++wrong;
        });
    for (auto &r : readers)
        r.join();
    EXPECT_EQ(wrong.load(), 0);
    EXPECT_EQ(cvn_np_sim_ifsubsys_queries(), 8u * 2000 * 3);
}

} // namespace
