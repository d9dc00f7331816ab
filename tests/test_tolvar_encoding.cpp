// The tolvar front-port encoding and the platform query, the same on both
// tolvar cards: bits 7..6 the subslot, then the port, or on a split
// subslot the instance (bits 5..4) and the instance port (bits 3..0).
#include "test_tolvar_support.h"

namespace {

using namespace cvn_test;
using namespace cvn_test::tolvar;

class TolvarEncodingTest : public TolvarTest, public testing::WithParamInterface<uint32_t> {
  protected:
    TolvarEncodingTest() : TolvarTest(GetParam()) {}
};

// What subslot 1 holds in a case: an EP or split code, nothing, or a failing
// platform call.
enum class Holds { plain, plain_16, split, split_one, unknown, instance_code, nothing, failing };

void Script(Holds h)
{
    cvn_np_sim_reset();
    switch (h) {
    case Holds::plain:
        Install(1, k2x10);
        break;
    case Holds::plain_16:
        Install(1, k16x10);
        break;
    case Holds::split:
        InstallSplit(1, kSplit, k10G, k10G);
        break;
    case Holds::split_one:
        InstallSplit(1, kSplitOne, k40G, k10G);
        break;
    case Holds::unknown:
        Install(1, kUnknownEp);
        break;
    case Holds::instance_code:
        Install(1, k10G);
        break;
    case Holds::nothing:
        break;
    case Holds::failing:
        cvn_np_sim_fail_all(kFailStatus);
        break;
    }
}

TEST_P(TolvarEncodingTest, PlainEncodingCutsEachFieldToItsBits)
{
    EXPECT_EQ(cvn_np_lib_set_subslot_phy_port(3, 70), 0xC6u);
    EXPECT_EQ(cvn_np_lib_set_subslot_phy_port(1, 5), 0x45u);
    EXPECT_EQ(cvn_np_lib_set_subslot_phy_port(0x105, 0x41), 0x41u);
    EXPECT_EQ(cvn_np_lib_get_subslot(0x53), 1u);
    EXPECT_EQ(cvn_np_lib_get_subslot(0x1C0), 3u);
    EXPECT_EQ(cvn_np_lib_get_subslot_port(0x1C5), 0xC5u);
    EXPECT_EQ(cvn_np_lib_get_port(0xC5), 5u);
    EXPECT_EQ(cvn_np_lib_get_port(0x17F), 0x3Fu);
    EXPECT_EQ(cvn_np_sim_ifsubsys_queries(), 0u); // none of these asks the platform
}

TEST_P(TolvarEncodingTest, SubslotTypeChoosesTheSplitOrPlainForm)
{
    struct Case {
        Holds holds;
        uint32_t encoded;  // slot 30 (1, instance 1, port 3)
        uint32_t instance; // slot 34 of 0x53
        uint32_t port;     // slot 35 of 0x53
        uint32_t tuple;    // slot 36 (subslot 1, 1, 3)
    };
    const Case cases[] = {
        {Holds::split, 0x53, 1, 3, 0x53},
        {Holds::split_one, 0x53, 1, 3, 0x53},
        {Holds::plain, 0x43, 0, 0x13, 0x41},
        {Holds::plain_16, 0x43, 0, 0x13, 0x41},
        {Holds::unknown, 0x43, 0, 0x13, 0},
        {Holds::instance_code, 0x43, 0, 0x13, 0},
        {Holds::nothing, 0x43, kInvalid, 0x13, kInvalid},
        {Holds::failing, 0x43, kInvalid, kInvalid, kInvalid},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(static_cast<int>(c.holds));
        Script(c.holds);
        EXPECT_EQ(cvn_np_lib_set_subslot_ifsubinst_ifsubinst_port(1, 1, 3), c.encoded);
        EXPECT_EQ(cvn_np_lib_get_ifsubinst(0x53), c.instance);
        EXPECT_EQ(cvn_np_lib_get_ifsubinst_port(0x53), c.port);
        EXPECT_EQ(cvn_np_lib_get_phys_port_tuple45(0xFFFF, 1, 1, 3), c.tuple);
    }
    Script(Holds::split);
    EXPECT_EQ(cvn_np_lib_set_subslot_ifsubinst_ifsubinst_port(1, 5, 0x1F), 0x5Fu);
    // Subslot 0x101 is asked as such (it holds nothing); only the result is cut.
    EXPECT_EQ(cvn_np_lib_set_subslot_ifsubinst_ifsubinst_port(0x101, 2, 3), 0x43u);
    Script(Holds::plain);
    EXPECT_EQ(cvn_np_lib_get_phys_port_tuple45(0, 1, 70, 0), 0x46u);
}

TEST_P(TolvarEncodingTest, FrontPortQueryAsksTheDecodedPlace)
{
    Script(Holds::split);
    Out out = Fresh();
    EXPECT_EQ(aux_cvn_np_front_port_to_ifsubsys(0x53, &out[0], &out[1], &out[2]), 0u);
    EXPECT_EQ(out, (Out{1, 1, k10G, kSentinel}));
    EXPECT_EQ(aux_cvn_np_front_port_to_ifsubsys(0x53, nullptr, nullptr, nullptr), 0u);
    Script(Holds::plain);
    out = Fresh();
    EXPECT_EQ(aux_cvn_np_front_port_to_ifsubsys(0x53, &out[0], &out[1], &out[2]), 0u);
    EXPECT_EQ(out, (Out{1, 0, k2x10, kSentinel}));
    Script(Holds::failing);
    out = Fresh();
    EXPECT_EQ(aux_cvn_np_front_port_to_ifsubsys(0x53, &out[0], &out[1], &out[2]), kFailStatus);
    EXPECT_EQ(out, Fresh());
}

TEST_P(TolvarEncodingTest, InstanceOfAFrontPortByWhatAnswersThere)
{
    uint32_t inst = kSentinel;
    EXPECT_EQ(aux_cvn_np_front_port_to_ifsubinst(0x53, nullptr), CVN_NP_EINVAL);
    Script(Holds::split);
    EXPECT_EQ(aux_cvn_np_front_port_to_ifsubinst(0x53, &inst), 0u);
    EXPECT_EQ(inst, 1u);
    Script(Holds::plain);
    EXPECT_EQ(aux_cvn_np_front_port_to_ifsubinst(0x53, &inst), 0u);
    EXPECT_EQ(inst, 0x13u);
    Script(Holds::nothing); // the empty subslot's answer is not an instance type
    EXPECT_EQ(aux_cvn_np_front_port_to_ifsubinst(0x6A, &inst), 0u);
    EXPECT_EQ(inst, 0x2Au);
    Script(Holds::failing);
    inst = kSentinel;
    EXPECT_EQ(aux_cvn_np_front_port_to_ifsubinst(0x53, &inst), kFailStatus);
    EXPECT_EQ(inst, kSentinel);
}

TEST_P(TolvarEncodingTest, NpPortSearchTakesTheFirstMatchWithinCount) { ExpectNpPortSearch(); }

INSTANTIATE_TEST_SUITE_P(BothCards, TolvarEncodingTest, testing::Values(0x3D0296u, 0x3D028Cu),
                         [](const testing::TestParamInfo<uint32_t> &info) {
                             return info.param == 0x3D0296u ? std::string("TwoSlice")
                                                            : std::string("OneSlice");
                         });

} // namespace
