// The platform substitute: environment syntax, the malformed-value exit,
// scripted answers and failures, the counters and reset.
#include "test_support.h"

namespace {

constexpr uint32_t kAny = CVN_NP_SIM_ANY, kNone = CVN_NP_IFSUB_TYPE_NONE, kJunk = 0xA5A5A5A5;

uint32_t Ask(uint32_t subslot,
             uint32_t ifsubsys) // the type, else the status (bit 31: info written)
{
    ifsubsys_info info{kJunk, kJunk, kJunk, kJunk};
    const ifsubsys_id id{0, subslot, ifsubsys};
    const uint32_t status = rva_ifsubsys_get_info(&id, &info);
    return status == 0 ? info.type : status | (info.type == kJunk ? 0 : 0x80000000u);
}

TEST(PlatformSim, EnvironmentSyntaxAndMalformedValues)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    for (const auto &[text, type] :
         {std::pair{"0x3D0275", 0x3D0275}, {"017", 15}, {"", 0x3D0274}}) {
        setenv("CVN_NP_SIM_CARD_TYPE", text, 1);
        cvn_np_sim_reset();
        cvn_np_sim_load_environment();
        EXPECT_EQ(platform_get_my_card_type(), uint32_t(type)) << text;
    }
    setenv("CVN_NP_SIM_IFSUBSYS", "0:3=0x10002,1:any=574, 1:0=0X10000 ,\t2:010=7,0:3=9", 1);
    cvn_np_sim_load_environment();
    const uint32_t rows[][3] = {
        {0, 3, 9}, {1, kAny, 574}, {1, 0, 0x10000}, {2, 8, 7}, {1, 1, kNone}};
    for (const auto &r : rows)
        EXPECT_EQ(Ask(r[0], r[1]), r[2]) << r[0] << ":" << r[1];
    for (const std::string bad :
         {"0:x=5", "0:1", ":1=2", "0:1=0x", "0:1=+1", "0:1=4294967296", "0:ANY=1", "0:1=08",
          "0 :1=2", "1:2=3,,0:1=2", "0:1=2,", "CARD=0x1g"})
        EXPECT_EXIT((bad.starts_with("CARD") ? setenv("CVN_NP_SIM_CARD_TYPE", bad.c_str() + 5, 1)
                                             : setenv("CVN_NP_SIM_IFSUBSYS", bad.c_str(), 1),
                     cvn_np_sim_load_environment()),
                    ::testing::ExitedWithCode(2),
                    "^cvn_np_sim: CVN_NP_SIM_[A-Z_]+: [^\n]*\"[^\n]*\n$")
            << bad;
}

TEST(PlatformSim, ScriptingFailuresCountersAndReset)
{
    cvn_np_sim_reset();
    cvn_np_sim_set_card_type(0x1234);
    EXPECT_EQ(cvn_np_sim_set_ifsubsys(1, 2, 0x10041) + cvn_np_sim_fail_ifsubsys(1, 2, 0), -1);
    EXPECT_EQ(cvn_np_sim_fail_ifsubsys(0, kAny, 0x5A17), 0);
    const uint32_t rows[][3] = {{1, 2, 0x10041}, {0, kAny, 0x5A17}, {0, 2, kNone}, {7, 7, kNone}};
    for (const auto &r : rows)
        EXPECT_EQ(Ask(r[0], r[1]), r[2]) << r[0] << ":" << r[1];
    cvn_np_sim_fail_all(5);
    EXPECT_EQ(Ask(1, 2), 5u);
    cvn_np_sim_fail_all(0);
    EXPECT_EQ(Ask(1, 2), 0x10041u);
    EXPECT_EQ(rva_ifsubsys_get_info(nullptr, nullptr), 22u);
    EXPECT_EQ(platform_get_my_card_type(), 0x1234u);
    EXPECT_EQ(cvn_np_sim_card_type_queries() * 100 + cvn_np_sim_ifsubsys_queries(), 107u);
    for (uint32_t i = 0; i + 2 < CVN_NP_SIM_MAX_ENTRIES; ++i)
        EXPECT_EQ(cvn_np_sim_set_ifsubsys(100 + i, 0, i), 0);
    EXPECT_EQ(cvn_np_sim_set_ifsubsys(99, 0, 1) + cvn_np_sim_set_ifsubsys(1, 2, 3), -1); // full
    cvn_np_sim_reset();
    EXPECT_EQ(cvn_np_sim_ifsubsys_queries() + cvn_np_sim_card_type_queries(), 0u);
    EXPECT_EQ(platform_get_my_card_type(), CVN_NP_SIM_DEFAULT_CARD_TYPE);
    EXPECT_EQ(Ask(1, 2) & Ask(0, kAny), kNone);
}

} // namespace
