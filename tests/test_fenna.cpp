// fenna: six cages, three NPs, one subslot; cages 2n and 2n+1 belong to NP n.
// It knows three module types only, counts NP-local ports of a type per NP,
// refuses NP-local ports above 254 and has no cage-decode operation.
#include "test_support.h"

namespace {

using namespace cvn_test;

constexpr uint32_t kCages = 6;
constexpr uint32_t kNps = 3;

std::string Report(const char *condition) { return ReportLine("cvn_np_lib_fenna.cpp", condition); }

uint32_t PortsPerCage(uint32_t ifsub_type)
{
    switch (ifsub_type) {
    case k100G:
        return 1;
    case k40G:
        return 2;
    case k10G:
        return 10;
    default:
        return 0;
    }
}

class FennaTest : public LibTest {
  protected:
    FennaTest() : LibTest(0x3D0267) {}
};

TEST_F(FennaTest, CardSummaryDescribesSixCagesOnThreeNps)
{
    const card_version *v = cvn_np_version_get();
    ASSERT_EQ(v, &fenna_card_version);
    EXPECT_EQ(v->ver_major, 5);
    EXPECT_EQ(v->ver_minor, 'c');
    EXPECT_EQ(cvn_max_mtu(), 9216u);
    EXPECT_EQ(cvn_np_how_many(), kNps);
    EXPECT_EQ(cvn_np_chip_how_many(), kNps);
    const subslot_info *s = cvn_np_subslot_info_get();
    ASSERT_NE(s, nullptr);
    EXPECT_EQ((Quad{s->num_of_subslots, s->max_ports_per_subslot, s->max_of_ifsubsys_per_subslot,
                    s->spare}),
              (Quad{1, 10, kCages, 255}));
    EXPECT_EQ(ListOf(cvn_np_port_info_subslot(0)), (List{{kCages, CVN_NP_PORT_TYPE_COMBO}}));
    EXPECT_DEATH(cvn_np_port_info_subslot(1), Report("subslot < fenna_card_np_info->num_subslot"));
    EXPECT_EQ(cvn_np_to_cpu_port_map(2), 3u);
    EXPECT_EQ(cvn_np_set_if_subsys_type(0, 0), 0u);
    uint32_t out = kSentinel;
    EXPECT_EQ(cvn_np_first_phys_port_on_np(0, &out), kInvalid);
    EXPECT_EQ(out, kSentinel);
}

TEST_F(FennaTest, CardPortInfoStopsAtTheFirstCageReportingAnyType)
{
    EXPECT_EQ(cvn_np_port_info_get(), fenna_dummy_port_info);
    Plug(4, k40G);
    Plug(5, k10G);
    EXPECT_EQ(ListOf(cvn_np_port_info_get()), (List{{2, CVN_NP_PORT_TYPE_40GE}}));
    Plug(1, k40GAlt); // a type fenna has no list for still ends the scan
    EXPECT_EQ(cvn_np_port_info_get(), fenna_dummy_port_info);
}

TEST_F(FennaTest, CagePortInfoKnowsThreeModuleTypes)
{
    const std::vector<std::pair<uint32_t, List>> cases = {
        {k100G, {{1, CVN_NP_PORT_TYPE_100GE}}},
        {k40G, {{2, CVN_NP_PORT_TYPE_40GE}}},
        {k10G, {{10, CVN_NP_PORT_TYPE_10GE}}},
        {k40GAlt, {}},
        {kNone, {}},
    };
    for (const auto &[type, list] : cases) {
        for (uint32_t c = 0; c < kCages; ++c) {
            SCOPED_TRACE(testing::Message() << "cage " << c << " type " << std::hex << type);
            Plug(c, type);
            EXPECT_EQ(ListOf(cvn_np_port_info_from_subslot_ifsubinst(0, c)), list);
            EXPECT_EQ(ListOf(aux_cvn_np_port_info_get(0, c, type)), list);
        }
    }
    EXPECT_EQ(aux_cvn_np_port_info_get(0, 3, k40GAlt), fenna_dummy_port_info);
    Plug(2, kFails);
    EXPECT_EQ(cvn_np_port_info_from_subslot_ifsubinst(0, 2), fenna_dummy_port_info);
    EXPECT_DEATH(cvn_np_port_info_from_subslot_ifsubinst(1, 6),
                 Report("subslot < fenna_card_np_info->num_subslot"));
    EXPECT_DEATH(cvn_np_port_info_from_subslot_ifsubinst(0, 6),
                 Report("ifsubinst < fenna_card_np_info->num_cage"));
    EXPECT_DEATH(aux_cvn_np_port_info_get(1, 0, k10G),
                 Report("subslot_num < fenna_card_np_info->num_subslot"));
    EXPECT_DEATH(aux_cvn_np_port_info_get(0, 6, k10G),
                 Report("ifsubsys_num < fenna_card_np_info->num_cage"));
}

TEST_F(FennaTest, ExportedTablesRunCageByCageWithParityNpPorts)
{
    const port_mapping_entry *const mapping[3] = {cvn_np_port_mapping_fenna_100g,
                                                  cvn_np_port_mapping_fenna_40g,
                                                  cvn_np_port_mapping_fenna_10g};
    const int32_t *const index[3] = {fenna_phys_2_fplate_cage_100GE, fenna_phys_2_fplate_cage_40GE,
                                     fenna_phys_2_fplate_cage_10GE};
    ExpectExportedTablesFollowWiring(kCages, mapping, index);
}

TEST_F(FennaTest, FrontPortMapsToCageNpAndParityNpPort)
{
    ExpectFrontPortsFollowWiring(kCages, Speeds());
}

TEST_F(FennaTest, FrontPortOfAnUnusableCageEndsInTheAssertions)
{
    Plug(0, k10G);
    Plug(1, k40G);
    Plug(2, k100G);
    Plug(3, k40GAlt);
    Plug(5, kFails);
    EXPECT_DEATH(cvn_np_front_port_to_np(0x0A),
                 Report("index < fenna_card_np_info->port_subslot_10g"));
    EXPECT_DEATH(cvn_np_front_port_to_np(0x12),
                 Report("index < fenna_card_np_info->port_subslot_40g"));
    EXPECT_DEATH(cvn_np_front_port_to_np(0x21),
                 Report("index < fenna_card_np_info->port_subslot_100g"));
    EXPECT_DEATH(cvn_np_front_port_to_np(0x60),
                 Report("cage_id.ifsubsys < fenna_card_np_info->num_cage"));
    for (uint32_t f : {0x30u, 0x40u, 0x50u}) { // 40GE alt, empty, failed query
        SCOPED_TRACE(testing::Message() << "front 0x" << std::hex << f);
        EXPECT_DEATH(cvn_np_front_port_to_np(f), Report("0"));
        EXPECT_DEATH(cvn_np_front_port_to_np_port(f), Report("0"));
        EXPECT_DEATH(cvn_np_front_port_to_port_type(f), Report("0"));
    }
    uint32_t out = 0;
    EXPECT_DEATH(cvn_np_front_port_to_face_plate_port(0x40, &out, &out), Report("0"));
    Quad o = Untouched();
    EXPECT_EQ(cvn_np_front_port_to_face_plate_port(0x51, &o[0], &o[1]), kFailStatus);
    EXPECT_EQ(cvn_np_front_port_mapping_info(0x51, &o[0], &o[1], &o[2], &o[3]), kFailStatus);
    EXPECT_EQ(cvn_np_front_port_to_face_plate_port(0x01, nullptr, &o[3]), kInvalid);
    EXPECT_EQ(o, Untouched());
}

TEST_F(FennaTest, LocalPortCountAddsOneCageWorthPerPopulatedCage)
{
    const std::vector<std::pair<uint32_t, uint32_t>> cages = {
        {k10G, k10G}, {k100G, k40G}, {kNone, kNone}, {kNone, k10G}, {kFails, k40G}, {k100G, kFails},
    };
    for (uint32_t n = 0; n < kNps; ++n) {
        for (const auto &[even, odd] : cages) {
            PlugNp(kCages, k10G, n, even, odd);
            SCOPED_TRACE(testing::Message() << "np " << n << std::hex << " " << even << " " << odd);
            EXPECT_EQ(cvn_np_info_num_local_ports(n), PortsPerCage(even) + PortsPerCage(odd));
        }
    }
    PlugNp(kCages, kNone, 1, kNone, k40GAlt);
    EXPECT_DEATH(cvn_np_info_num_local_ports(1), Report("0"));
    EXPECT_DEATH(cvn_np_info_num_local_ports(kNps), Report("np_id < cvn_np_how_many()"));
}

TEST_F(FennaTest, LocalPortCountOfATypeIsPerNp)
{
    for (uint32_t n = 0; n < kNps; ++n) {
        EXPECT_EQ(aux_cvn_np_info_num_local_ports(0, n, k100G), 2u);
        EXPECT_EQ(aux_cvn_np_info_num_local_ports(0, n, k40G), 4u);
        EXPECT_EQ(aux_cvn_np_info_num_local_ports(0, n, k10G), 20u);
    }
    EXPECT_DEATH(aux_cvn_np_info_num_local_ports(0, 0, k40GAlt), Report("0"));
    EXPECT_DEATH(aux_cvn_np_info_num_local_ports(1, 0, k10G),
                 Report("subslot_num < fenna_card_np_info->num_subslot"));
    EXPECT_DEATH(aux_cvn_np_info_num_local_ports(0, kNps, k10G),
                 Report("np_num < fenna_card_np_info->num_complex"));
}

TEST_F(FennaTest, NpLocalAndFaceplatePortsMapFromTablesAlone)
{
    ExpectNpAndFaceplatePortsFollowWiring(kCages);
}

TEST_F(FennaTest, NpLocalPortAbove254IsRejectedAndUnmatchedOnesLeaveOutputsAlone)
{
    struct Case {
        uint32_t np, np_port, result;
    };
    for (const Case &k :
         {Case{0, 254, 0}, Case{1, 202, 0}, Case{2, 150, 0}, Case{0, 98, 0}, Case{1, 255, kInvalid},
          Case{0, 0x100C0, kInvalid}, Case{2, 0xFFFFFFFF, kInvalid}, Case{kNps, 117, kInvalid}}) {
        SCOPED_TRACE(testing::Message() << "np " << k.np << " np_port " << k.np_port);
        Quad out = Untouched();
        EXPECT_EQ(cvn_np_info_to_fplate_porttype(k.np, k.np_port, &out[0], &out[1]), k.result);
        EXPECT_EQ(cvn_np_info_to_front_port(k.np, k.np_port, &out[2]), k.result);
        EXPECT_EQ(out, Untouched());
    }
}

TEST_F(FennaTest, NpLocalPortSearchKnowsThreeTypes)
{
    Quad out = Untouched();
    aux_cvn_np_info_to_mapping_info(1, 195, k10G, &out[0], &out[1], &out[2]);
    EXPECT_EQ(out, (Quad{0x33, 0x33, CVN_NP_PORT_TYPE_10GE, kSentinel}));
    out = Untouched();
    aux_cvn_np_info_to_mapping_info_fenna(2, 100, k40G, &out[0], nullptr, nullptr);
    EXPECT_EQ(out, (Quad{0x41, kSentinel, kSentinel, kSentinel}));
    out = Untouched();
    for (uint32_t n = 0; n < kNps; ++n)
        aux_cvn_np_info_to_mapping_info(n, 202, k10G, &out[0], &out[1], &out[2]);
    EXPECT_EQ(out, Untouched());
    EXPECT_DEATH(aux_cvn_np_info_to_mapping_info(0, 97, k40GAlt, &out[0], &out[1], &out[2]),
                 Report("0"));
    EXPECT_DEATH(aux_cvn_np_info_to_mapping_info(kNps, 117, k100G, &out[0], &out[1], &out[2]),
                 Report("np_num < fenna_card_np_info->num_complex"));
    ExpectNpPortSearchStopsAtFirstMatchWithinCount(&aux_np_port_to_mapping_info);
    ExpectNpPortSearchStopsAtFirstMatchWithinCount(&aux_np_port_to_mapping_info_fenna);
}

TEST_F(FennaTest, FirstPortOfNpNeedsAKnownTypeInItsFirstPopulatedCage)
{
    struct Case {
        uint32_t even, odd, result, port_type;
    };
    const std::vector<Case> cases = {
        {k10G, kNone, 0, CVN_NP_PORT_TYPE_10GE},
        {kNone, k100G, 0, CVN_NP_PORT_TYPE_100GE},
        {k40G, k10G, 0, CVN_NP_PORT_TYPE_40GE},
        {k40GAlt, k10G, kInvalid, 0},
        {kNone, kNone, kInvalid, 0},
        {kFails, k10G, kFailStatus, 0},
        {kNone, kFails, kFailStatus, 0},
        {k100G, kFails, 0, CVN_NP_PORT_TYPE_100GE},
    };
    for (uint32_t n = 0; n < kNps; ++n) {
        for (const Case &k : cases) {
            PlugNp(kCages, k40G, n, k.even, k.odd);
            SCOPED_TRACE(testing::Message()
                         << "np " << n << std::hex << " " << k.even << " " << k.odd);
            ExpectFirstPortOnNp(n, k.result, k.port_type);
        }
    }
    uint32_t out = 0;
    EXPECT_DEATH(cvn_np_first_front_port_on_np(0, nullptr), Report("phys_front_port != NULL"));
    EXPECT_DEATH(cvn_np_first_front_port_on_np(kNps, &out), Report("np_id < cvn_np_how_many()"));
    EXPECT_DEATH(cvn_np_first_fplate_porttype_on_np(0, nullptr, &out), Report("port_type != NULL"));
    EXPECT_DEATH(cvn_np_first_fplate_porttype_on_np(0, &out, nullptr),
                 Report("fplate_port != NULL"));
    EXPECT_DEATH(cvn_np_first_fplate_porttype_on_np(kNps, &out, &out),
                 Report("np_id < cvn_np_how_many()"));
}

TEST_F(FennaTest, FirstPortOfNpForAType)
{
    for (uint32_t n = 0; n < kNps; ++n) {
        for (const Speed &s : Speeds()) {
            Quad out = Untouched();
            EXPECT_EQ(aux_cvn_np_first_port_on_np(n, 0, s.ifsub_type, &out[0], &out[1], &out[2]),
                      0u);
            EXPECT_EQ(out, (Quad{Front(2 * n, 0), Front(2 * n, 0), s.port_type, kSentinel}));
        }
    }
    Quad out = Untouched();
    EXPECT_EQ(aux_cvn_np_first_port_on_np(0, 0, k40GAlt, &out[0], &out[1], &out[2]), kInvalid);
    EXPECT_EQ(aux_cvn_np_first_port_on_np(kNps, 0, k10G, &out[0], &out[1], &out[2]), kInvalid);
    EXPECT_EQ(out, Untouched());
}

TEST_F(FennaTest, FaceplatePortWithoutAPortOfItsTypeFailsTheIndex)
{
    for (uint32_t c = 0; c < kCages; ++c) {
        EXPECT_DEATH(aux_cvn_faceplate_to_mapping_info(c, Front(c, 10), CVN_NP_PORT_TYPE_10GE,
                                                       nullptr, nullptr, nullptr),
                     Report("index < fenna_card_np_info->port_subslot_10g"));
    }
    EXPECT_DEATH(cvn_faceplate_porttype_to_np(CVN_NP_PORT_TYPE_40GE, 0x52),
                 Report("index < fenna_card_np_info->port_subslot_40g"));
    EXPECT_DEATH(aux_cvn_faceplate_to_mapping_info(0, 0x60, CVN_NP_PORT_TYPE_10GE, nullptr, nullptr,
                                                   nullptr),
                 Report("index < fenna_card_np_info->port_subslot_10g")); // past the table
    EXPECT_DEATH(cvn_faceplate_porttype_to_np(CVN_NP_PORT_TYPE_100GE, 0x51),
                 Report("index < fenna_card_np_info->port_subslot_100g"));
    EXPECT_DEATH(cvn_faceplate_porttype_to_np(CVN_NP_PORT_TYPE_NONE, 0x00), Report("0"));
    EXPECT_DEATH(cvn_faceplate_porttype_to_np(0x101, 0x00), Report("0"));
    EXPECT_DEATH(cvn_faceplate_porttype_to_np(CVN_NP_PORT_TYPE_10GE, 0x60),
                 Report("ifsubsys_num < fenna_card_np_info->num_cage"));
}

TEST_F(FennaTest, MappingOfAFrontPortOfAKnownType)
{
    Quad out = Untouched();
    aux_cvn_np_front_port_to_mapping_info(5, 0x59, k10G, &out[0], &out[1], &out[2], &out[3]);
    EXPECT_EQ(out, (Quad{2, 201, 0x59, CVN_NP_PORT_TYPE_10GE}));
    uint32_t np = 0, npp = 0, fp = 0, pt = 0;
    EXPECT_DEATH(aux_cvn_np_front_port_to_mapping_info(1, 0x10, k40GAlt, &np, &npp, &fp, &pt),
                 Report("0"));
    EXPECT_DEATH(aux_cvn_np_front_port_to_mapping_info(6, 0x10, k40GAlt, &np, &npp, &fp, &pt),
                 Report("ifsubsys_num < fenna_card_np_info->num_cage"));
    EXPECT_DEATH(aux_cvn_np_front_port_to_mapping_info(0, 0x02, k40G, &np, &npp, &fp, &pt),
                 Report("index < fenna_card_np_info->port_subslot_40g"));
    EXPECT_DEATH(aux_cvn_np_front_port_to_mapping_info(0, 0x60, k10G, &np, &npp, &fp, &pt),
                 Report("index < fenna_card_np_info->port_subslot_10g")); // past the table
}

TEST_F(FennaTest, CageQueryAsksThePlatformForSubslotZeroAndTheCage)
{
    for (uint32_t c = 0; c < kCages; ++c) {
        Plug(c, k100G + c);
        ASSERT_EQ(cvn_np_sim_set_ifsubsys(1, c, k10G), 0);
    }
    for (uint32_t c = 0; c < kCages; ++c) {
        Quad out = Untouched();
        EXPECT_EQ(aux_cvn_np_front_port_to_ifsubsys(Front(c, 9), &out[0], &out[1], &out[2]), 0u);
        EXPECT_EQ(out, (Quad{0, c, k100G + c, kSentinel}));
    }
    cvn_np_sim_fail_all(kFailStatus);
    Quad out = Untouched();
    EXPECT_EQ(aux_cvn_np_front_port_to_ifsubsys(0x10, &out[0], &out[1], &out[2]), kFailStatus);
    EXPECT_EQ(out, Untouched());
    EXPECT_EQ(cvn_np_port_info_get(), fenna_dummy_port_info); // every cage unanswered
    EXPECT_DEATH(aux_cvn_np_front_port_to_ifsubsys(0x60, &out[0], &out[1], &out[2]),
                 Report("cage_id.ifsubsys < fenna_card_np_info->num_cage"));
}

TEST_F(FennaTest, ComplexesSubslotsAndEncoding)
{
    for (uint32_t n = 0; n < kNps; ++n) {
        EXPECT_EQ(cvn_np_complex_to_subslot(n), 0u);
        EXPECT_EQ(cvn_np_complex_to_np(n, 1), n);
        Quad out = Untouched();
        EXPECT_EQ(cvn_np_complex_to_subslot_list(n, &out[0], &out[1]), 0u);
        EXPECT_EQ(out, (Quad{1, 0, kSentinel, kSentinel}));
    }
    Quad out = Untouched();
    EXPECT_EQ(cvn_np_complex_to_subslot_list(2, nullptr, &out[1]), 0u);
    EXPECT_EQ(cvn_np_subslot_to_np_list(0, &out[2], &out[3]), 0u);
    EXPECT_EQ(out, (Quad{kSentinel, kSentinel, kNps, 0}));
    EXPECT_EQ(cvn_np_subslot_to_np_list(0, nullptr, &out[3]), kInvalid);
    EXPECT_DEATH(cvn_np_complex_to_subslot(kNps), Report("np_complex < cvn_np_how_many()"));
    EXPECT_DEATH(cvn_np_complex_to_subslot_list(kNps, nullptr, nullptr),
                 Report("np_complex < cvn_np_how_many()"));
    EXPECT_DEATH(cvn_np_complex_to_np(kNps, 0), Report("np_complex < cvn_np_how_many()"));

    EXPECT_EQ(cvn_np_lib_set_subslot_ifsubinst_ifsubinst_port(0, 5, 0x19), 0x59u);
    EXPECT_EQ((Quad{cvn_np_lib_get_subslot(0x159), cvn_np_lib_get_port(0x159),
                    cvn_np_lib_get_ifsubinst(0x159), cvn_np_lib_get_ifsubinst_port(0x159)}),
              (Quad{0, 0x59, 5, 9}));
    EXPECT_EQ(cvn_np_lib_get_phys_port_tuple45(CVN_NP_PORT_TYPE_100GE, 0, 5, 9), 0x50u);
    EXPECT_EQ(cvn_np_lib_get_phys_port_tuple45(CVN_NP_PORT_TYPE_COMBO, 0, 5, 9), 255u);
}

TEST_F(FennaTest, FrontPortCageDecodeIsNotProvided)
{
    EXPECT_EQ(cvn_np_api_fenna.aux_cvn_np_front_port_to_ifsubinst, nullptr);
    uint32_t cage = kSentinel;
    EXPECT_EQ(aux_cvn_np_front_port_to_ifsubinst(0x35, &cage), kInvalid);
    EXPECT_EQ(aux_cvn_np_front_port_to_ifsubinst(0x85, &cage), kInvalid);
    EXPECT_EQ(cage, kSentinel);
}

} // namespace
