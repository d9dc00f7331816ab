// brisca: eight cages, four NPs, one subslot; cages 2n and 2n+1 belong to
// NP n; a cage holds one 100GE, two 40GE or ten 10GE ports, as the platform
// reports.
#include "test_support.h"

namespace {

using namespace cvn_test;

constexpr uint32_t kCages = 8;
constexpr uint32_t kNps = 4;

std::string Report(const char *condition) { return ReportLine("cvn_np_lib_brisca.cpp", condition); }

// brisca knows the alternative 40GE module too: 40GE tables, one port counted.
std::vector<Speed> BriscaSpeeds()
{
    auto speeds = Speeds();
    speeds.push_back({"40GE alt", k40GAlt, CVN_NP_PORT_TYPE_40GE, 2, 99, 96});
    return speeds;
}

uint32_t PortsCountedPerCage(uint32_t ifsub_type)
{
    switch (ifsub_type) {
    case k100G:
        return 1;
    case k40G:
        return 2;
    case k40GAlt:
        return 1;
    case k10G:
        return 10;
    default:
        return 0;
    }
}

class BriscaTest : public LibTest {
  protected:
    BriscaTest() : LibTest(0x3D0274) {}
};

TEST_F(BriscaTest, CardSummaryDescribesEightCagesOnFourNps)
{
    const card_version *v = cvn_np_version_get();
    ASSERT_EQ(v, &brisca_card_version);
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
    EXPECT_DEATH(cvn_np_port_info_subslot(1), Report("subslot < brisca_card_np_info->num_subslot"));
}

TEST_F(BriscaTest, CardPortInfoIsThatOfTheFirstCageHoldingAModule)
{
    EXPECT_EQ(cvn_np_port_info_get(), brisca_dummy_port_info);
    EXPECT_EQ(cvn_np_sim_ifsubsys_queries(), kCages);

    cvn_np_sim_reset();
    Plug(3, k10G);
    Plug(6, k100G);
    EXPECT_EQ(ListOf(cvn_np_port_info_get()), (List{{10, CVN_NP_PORT_TYPE_10GE}}));
    EXPECT_EQ(cvn_np_sim_ifsubsys_queries(), 4u); // cages 0..3, then stop

    cvn_np_sim_reset();
    Plug(0, k40GAlt);
    Plug(1, k10G);
    EXPECT_EQ(ListOf(cvn_np_port_info_get()), (List{{2, CVN_NP_PORT_TYPE_40GE}}));

    cvn_np_sim_reset(); // a failed query counts as an empty cage
    Plug(0, kFails);
    Plug(5, k100G);
    EXPECT_EQ(ListOf(cvn_np_port_info_get()), (List{{1, CVN_NP_PORT_TYPE_100GE}}));
}

TEST_F(BriscaTest, CagePortInfoFollowsTheReportedModule)
{
    const std::vector<std::pair<uint32_t, List>> cases = {
        {k100G, {{1, CVN_NP_PORT_TYPE_100GE}}},
        {k40G, {{2, CVN_NP_PORT_TYPE_40GE}}},
        {k40GAlt, {{2, CVN_NP_PORT_TYPE_40GE}}},
        {k10G, {{10, CVN_NP_PORT_TYPE_10GE}}},
        {kNone, {}},
        {0x10004, {}},
    };
    for (const auto &[type, list] : cases) {
        for (uint32_t c = 0; c < kCages; ++c) {
            SCOPED_TRACE(testing::Message() << "cage " << c << " type " << std::hex << type);
            Plug(c, type);
            EXPECT_EQ(ListOf(cvn_np_port_info_from_subslot_ifsubinst(0, c)), list);
            EXPECT_EQ(ListOf(aux_cvn_np_port_info_get(0, c, type)), list);
        }
    }
    EXPECT_EQ(aux_cvn_np_port_info_get(0, 0, kNone), brisca_dummy_port_info);
    Plug(2, kFails);
    EXPECT_EQ(cvn_np_port_info_from_subslot_ifsubinst(0, 2), brisca_dummy_port_info);

    EXPECT_DEATH(cvn_np_port_info_from_subslot_ifsubinst(1, 8),
                 Report("subslot < brisca_card_np_info->num_subslot"));
    EXPECT_DEATH(cvn_np_port_info_from_subslot_ifsubinst(0, 8),
                 Report("ifsubinst < brisca_card_np_info->num_cage"));
    EXPECT_DEATH(aux_cvn_np_port_info_get(1, 8, k10G),
                 Report("subslot_num < brisca_card_np_info->num_subslot"));
    EXPECT_DEATH(aux_cvn_np_port_info_get(0, 8, k10G),
                 Report("ifsubsys_num < brisca_card_np_info->num_cage"));
}

TEST_F(BriscaTest, ExportedTablesRunCageByCageWithParityNpPorts)
{
    const port_mapping_entry *const mapping[3] = {cvn_np_port_mapping_brisca_100g,
                                                  cvn_np_port_mapping_brisca_40g,
                                                  cvn_np_port_mapping_brisca_10g};
    const int32_t *const index[3] = {brisca_phys_2_fplate_cage_100GE,
                                     brisca_phys_2_fplate_cage_40GE,
                                     brisca_phys_2_fplate_cage_10GE};
    ExpectExportedTablesFollowWiring(kCages, mapping, index);
}

TEST_F(BriscaTest, FrontPortMapsToCageNpAndParityNpPort)
{
    ExpectFrontPortsFollowWiring(kCages, BriscaSpeeds());
}

TEST_F(BriscaTest, ModulePluggedBetweenCallsChangesTheAnswer)
{
    Plug(0, k10G);
    EXPECT_EQ(cvn_np_front_port_to_np_port(0x00), 204u);
    Plug(0, k100G);
    EXPECT_EQ(cvn_np_front_port_to_np_port(0x00), 117u);
    EXPECT_EQ(cvn_np_front_port_to_port_type(0x00), CVN_NP_PORT_TYPE_100GE);
}

TEST_F(BriscaTest, FrontPortWithoutAPortOfTheModuleFailsItsSpeedIndex)
{
    Plug(0, k10G);
    Plug(1, k40G);
    Plug(2, k40GAlt);
    Plug(3, k100G);
    EXPECT_DEATH(cvn_np_front_port_to_np(0x0A),
                 Report("index < brisca_card_np_info->port_subslot_10g"));
    EXPECT_DEATH(cvn_np_front_port_to_np(0x12),
                 Report("index < brisca_card_np_info->port_subslot_40g"));
    EXPECT_DEATH(cvn_np_front_port_to_np_port(0x25),
                 Report("index < brisca_card_np_info->port_subslot_40g"));
    EXPECT_DEATH(cvn_np_front_port_to_port_type(0x31),
                 Report("index < brisca_card_np_info->port_subslot_100g"));
    EXPECT_DEATH(cvn_np_front_port_to_np(0x85),
                 Report("cage_id.ifsubsys < brisca_card_np_info->num_cage"));
}

TEST_F(BriscaTest, EmptyOrUnansweredCageEndsSingleAnswersButFailedQueryIsPassedBack)
{
    Plug(5, 0x10004); // a module type brisca has no tables for
    Plug(6, kFails);
    for (uint32_t f : {0x40u, 0x50u, 0x60u}) {
        SCOPED_TRACE(testing::Message() << "front 0x" << std::hex << f);
        EXPECT_DEATH(cvn_np_front_port_to_np(f), Report("0"));
        EXPECT_DEATH(cvn_np_front_port_to_np_port(f), Report("0"));
        EXPECT_DEATH(cvn_np_front_port_to_port_type(f), Report("0"));
    }
    EXPECT_DEATH(cvn_np_front_port_mapping_info(0x40, nullptr, nullptr, nullptr, nullptr),
                 Report("0"));
    Quad out = Untouched();
    EXPECT_EQ(cvn_np_front_port_to_face_plate_port(0x63, &out[0], &out[1]), kFailStatus);
    EXPECT_EQ(cvn_np_front_port_mapping_info(0x63, &out[0], &out[1], &out[2], &out[3]),
              kFailStatus);
    EXPECT_EQ(out, Untouched());
}

TEST_F(BriscaTest, FaceplatePortWithoutAnOutputIsRejectedBeforeAsking)
{
    Plug(0, k10G);
    uint32_t out = kSentinel;
    EXPECT_EQ(cvn_np_front_port_to_face_plate_port(0x01, nullptr, &out), kInvalid);
    EXPECT_EQ(cvn_np_front_port_to_face_plate_port(0x01, &out, nullptr), kInvalid);
    EXPECT_EQ(out, kSentinel);
    EXPECT_EQ(cvn_np_sim_ifsubsys_queries(), 0u);
}

TEST_F(BriscaTest, LocalPortCountAddsThePortsOfEachPopulatedCageOfTheNp)
{
    const std::vector<std::pair<uint32_t, uint32_t>> cages = {
        {k10G, k10G},   {k10G, k40GAlt}, {kNone, kNone},     {k100G, k40G},
        {kFails, k10G}, {k40G, kFails},  {k40GAlt, k40GAlt}, {kNone, k100G},
    };
    for (uint32_t n = 0; n < kNps; ++n) {
        for (const auto &[even, odd] : cages) {
            PlugNp(kCages, k10G, n, even, odd); // the other NPs' cages must not count
            SCOPED_TRACE(testing::Message() << "np " << n << std::hex << " " << even << " " << odd);
            EXPECT_EQ(cvn_np_info_num_local_ports(n),
                      PortsCountedPerCage(even) + PortsCountedPerCage(odd));
        }
    }
    PlugNp(kCages, kNone, 1, kNone, 0x10004);
    EXPECT_DEATH(cvn_np_info_num_local_ports(1), Report("0"));
    EXPECT_DEATH(cvn_np_info_num_local_ports(kNps), Report("np_id < cvn_np_how_many()"));
}

TEST_F(BriscaTest, LocalPortCountOfATypeIsPerCage)
{
    for (uint32_t n = 0; n < kNps; ++n) {
        for (uint32_t type : {k100G, k40G, k40GAlt, k10G}) {
            EXPECT_EQ(aux_cvn_np_info_num_local_ports(0, n, type), PortsCountedPerCage(type));
        }
    }
    EXPECT_DEATH(aux_cvn_np_info_num_local_ports(1, 0, k10G),
                 Report("subslot_num < brisca_card_np_info->num_subslot"));
    EXPECT_DEATH(aux_cvn_np_info_num_local_ports(0, kNps, k10G),
                 Report("np_num < brisca_card_np_info->num_complex"));
    EXPECT_DEATH(aux_cvn_np_info_num_local_ports(0, 0, kNone), Report("0"));
}

TEST_F(BriscaTest, NpLocalAndFaceplatePortsMapFromTablesAlone)
{
    ExpectNpAndFaceplatePortsFollowWiring(kCages);
}

TEST_F(BriscaTest, NpLocalPortWithoutAnEntryLeavesOutputsAlone)
{
    // 100 and below look in 40GE, 101..191 in 100GE, 192 and up in 10GE
    for (auto [n, npp] : {std::pair{2u, 150u},
                          {0u, 98u},
                          {1u, 202u},
                          {3u, 214u},
                          {0u, 0u},
                          {1u, 0x100C0u},
                          {2u, 0x10075u},
                          {3u, 255u}}) {
        SCOPED_TRACE(testing::Message() << "np " << n << " np_port " << npp);
        Quad out = Untouched();
        EXPECT_EQ(cvn_np_info_to_fplate_porttype(n, npp, &out[0], &out[1]), 0u);
        EXPECT_EQ(cvn_np_info_to_front_port(n, npp, &out[2]), 0u);
        EXPECT_EQ(out, Untouched());
    }
    Quad out = Untouched();
    EXPECT_EQ(cvn_np_info_to_fplate_porttype(kNps, 117, &out[0], &out[1]), kInvalid);
    EXPECT_EQ(cvn_np_info_to_front_port(kNps, 117, &out[2]), kInvalid);
    EXPECT_EQ(out, Untouched());
}

TEST_F(BriscaTest, NpLocalPortSearchOfAKnownType)
{
    for (uint32_t type : {k40G, k40GAlt}) {
        Quad out = Untouched();
        aux_cvn_np_info_to_mapping_info(2, 97, type, &out[0], &out[1], &out[2]);
        EXPECT_EQ(out, (Quad{0x51, 0x51, CVN_NP_PORT_TYPE_40GE, kSentinel}));
    }
    uint32_t f = kSentinel;
    aux_cvn_np_info_to_mapping_info(0, 117, k10G, &f, nullptr, nullptr);
    EXPECT_EQ(f, kSentinel);
    EXPECT_DEATH(aux_cvn_np_info_to_mapping_info(kNps, 117, k100G, &f, nullptr, nullptr),
                 Report("np_num < brisca_card_np_info->num_complex"));
    EXPECT_DEATH(aux_cvn_np_info_to_mapping_info(0, 117, 0x10004, &f, nullptr, nullptr),
                 Report("0"));
    ExpectNpPortSearchStopsAtFirstMatchWithinCount(&aux_np_port_to_mapping_info);
}

TEST_F(BriscaTest, FirstPortOfNpIsTheFirstEntryOfItsFirstPopulatedCageType)
{
    struct Case {
        uint32_t even, odd, result, port_type;
    };
    const std::vector<Case> cases = {
        {k10G, kNone, 0, CVN_NP_PORT_TYPE_10GE},
        {kNone, k100G, 0, CVN_NP_PORT_TYPE_100GE},
        {k40GAlt, k10G, 0, CVN_NP_PORT_TYPE_40GE},
        {k40G, k100G, 0, CVN_NP_PORT_TYPE_40GE},
        {k10G, kFails, 0, CVN_NP_PORT_TYPE_10GE},
        {kNone, kNone, kInvalid, 0},
        {kFails, k10G, kFailStatus, 0},
        {kNone, kFails, kFailStatus, 0},
    };
    for (uint32_t n = 0; n < kNps; ++n) {
        for (const Case &k : cases) {
            PlugNp(kCages, k100G, n, k.even, k.odd);
            SCOPED_TRACE(testing::Message()
                         << "np " << n << std::hex << " " << k.even << " " << k.odd);
            ExpectFirstPortOnNp(n, k.result, k.port_type);
        }
    }
    uint32_t out = kSentinel;
    EXPECT_EQ(cvn_np_first_phys_port_on_np(0, &out), kInvalid);
    EXPECT_EQ(out, kSentinel);
    EXPECT_DEATH(cvn_np_first_front_port_on_np(kNps, nullptr), Report("phys_front_port != NULL"));
    EXPECT_DEATH(cvn_np_first_front_port_on_np(kNps, &out), Report("np_id < cvn_np_how_many()"));
    EXPECT_DEATH(cvn_np_first_fplate_porttype_on_np(kNps, nullptr, nullptr),
                 Report("port_type != NULL"));
    EXPECT_DEATH(cvn_np_first_fplate_porttype_on_np(kNps, &out, nullptr),
                 Report("fplate_port != NULL"));
    EXPECT_DEATH(cvn_np_first_fplate_porttype_on_np(kNps, &out, &out),
                 Report("np_id < cvn_np_how_many()"));
}

TEST_F(BriscaTest, FirstPortOfNpForAType)
{
    for (uint32_t n = 0; n < kNps; ++n) {
        for (const Speed &s : BriscaSpeeds()) {
            Quad out = Untouched();
            EXPECT_EQ(aux_cvn_np_first_port_on_np(n, 7, s.ifsub_type, &out[0], &out[1], &out[2]),
                      0u);
            EXPECT_EQ(out, (Quad{Front(2 * n, 0), Front(2 * n, 0), s.port_type, kSentinel}));
        }
    }
    Quad out = Untouched();
    EXPECT_EQ(aux_cvn_np_first_port_on_np(0, 0, kNone, &out[0], &out[1], &out[2]), kInvalid);
    EXPECT_EQ(aux_cvn_np_first_port_on_np(0, 0, 0x10004, &out[0], &out[1], &out[2]), kInvalid);
    EXPECT_EQ(aux_cvn_np_first_port_on_np(kNps, 0, k10G, &out[0], &out[1], &out[2]), kInvalid);
    EXPECT_EQ(out, Untouched());
}

TEST_F(BriscaTest, FaceplatePortChecksCageThenTypeThenIndex)
{
    EXPECT_DEATH(cvn_faceplate_porttype_to_np(CVN_NP_PORT_TYPE_40GE, 0x52),
                 Report("index < brisca_card_np_info->port_subslot_40g"));
    EXPECT_DEATH(cvn_faceplate_porttype_to_np_port(CVN_NP_PORT_TYPE_10GE, 0x7A),
                 Report("index < brisca_card_np_info->port_subslot_10g"));
    EXPECT_DEATH(cvn_faceplate_porttype_to_phys_port(CVN_NP_PORT_TYPE_100GE, 0x21),
                 Report("index < brisca_card_np_info->port_subslot_100g"));
    EXPECT_DEATH(aux_cvn_faceplate_to_mapping_info(0, 0x80, CVN_NP_PORT_TYPE_10GE, nullptr, nullptr,
                                                   nullptr),
                 Report("index < brisca_card_np_info->port_subslot_10g"));
    EXPECT_DEATH(cvn_faceplate_porttype_to_np(CVN_NP_PORT_TYPE_COMBO, 0x00), Report("0"));
    EXPECT_DEATH(cvn_faceplate_porttype_to_np(0x103, 0x51), Report("0"));
    EXPECT_DEATH(
        cvn_faceplate_porttype_mapping_info(CVN_NP_PORT_TYPE_10GE, 0x80, nullptr, nullptr, nullptr),
        Report("ifsubsys_num < brisca_card_np_info->num_cage"));
    EXPECT_DEATH(aux_cvn_faceplate_to_mapping_info(8, 0x00, 0, nullptr, nullptr, nullptr),
                 Report("ifsubsys_num < brisca_card_np_info->num_cage"));
}

TEST_F(BriscaTest, MappingOfAFrontPortOfAKnownType)
{
    Quad out = Untouched();
    aux_cvn_np_front_port_to_mapping_info(3, 0x135, k10G, &out[0], &out[1], &out[2], &out[3]);
    EXPECT_EQ(out, (Quad{1, 197, 0x35, CVN_NP_PORT_TYPE_10GE})); // low 8 bits at 10GE
    out = Untouched();
    aux_cvn_np_front_port_to_mapping_info(6, 0x61, k40GAlt, nullptr, &out[1], nullptr, nullptr);
    EXPECT_EQ(out, (Quad{kSentinel, 100, kSentinel, kSentinel}));
    // at 100GE the port value itself indexes the table
    EXPECT_DEATH(
        aux_cvn_np_front_port_to_mapping_info(3, 0x130, k100G, &out[0], nullptr, nullptr, nullptr),
        Report("index < brisca_card_np_info->port_subslot_100g"));
    EXPECT_DEATH(
        aux_cvn_np_front_port_to_mapping_info(0, 0x80, k40G, &out[0], nullptr, nullptr, nullptr),
        Report("index < brisca_card_np_info->port_subslot_40g"));
    EXPECT_DEATH(
        aux_cvn_np_front_port_to_mapping_info(0, 0x00, kNone, &out[0], nullptr, nullptr, nullptr),
        Report("0"));
    EXPECT_DEATH(
        aux_cvn_np_front_port_to_mapping_info(8, 0x00, kNone, &out[0], nullptr, nullptr, nullptr),
        Report("ifsubsys_num < brisca_card_np_info->num_cage"));
}

TEST_F(BriscaTest, CageQueryAsksThePlatformForSubslotZeroAndTheCage)
{
    for (uint32_t c = 0; c < kCages; ++c) {
        Plug(c, k10G + (c % 3));
        ASSERT_EQ(cvn_np_sim_set_ifsubsys(1, c, k100G), 0);
    }
    for (uint32_t c = 0; c < kCages; ++c) {
        Quad out = Untouched();
        EXPECT_EQ(aux_cvn_np_front_port_to_ifsubsys(Front(c, 3) | 0x100, &out[0], &out[1], &out[2]),
                  0u);
        EXPECT_EQ(out, (Quad{0, c, k10G + (c % 3), kSentinel}));
    }
    EXPECT_EQ(aux_cvn_np_front_port_to_ifsubsys(0x20, nullptr, nullptr, nullptr), 0u);
    Plug(4, kFails);
    Quad out = Untouched();
    EXPECT_EQ(aux_cvn_np_front_port_to_ifsubsys(0x40, &out[0], &out[1], &out[2]), kFailStatus);
    EXPECT_EQ(out, Untouched());
    EXPECT_DEATH(aux_cvn_np_front_port_to_ifsubsys(0x80, &out[0], &out[1], &out[2]),
                 Report("cage_id.ifsubsys < brisca_card_np_info->num_cage"));
}

TEST_F(BriscaTest, ComplexesAndSubslots)
{
    for (uint32_t n = 0; n < kNps; ++n) {
        EXPECT_EQ(cvn_np_complex_to_subslot(n), 0u);
        EXPECT_EQ(cvn_np_complex_to_np(n, 0), n);
        EXPECT_EQ(cvn_np_complex_to_np(n, 1), n);
        Quad out = Untouched();
        EXPECT_EQ(cvn_np_complex_to_subslot_list(n, &out[0], &out[1]), 0u);
        EXPECT_EQ(out, (Quad{1, 0, kSentinel, kSentinel}));
    }
    Quad out = Untouched();
    EXPECT_EQ(cvn_np_complex_to_subslot_list(1, nullptr, &out[1]), 0u);
    EXPECT_EQ(cvn_np_complex_to_subslot_list(1, &out[0], nullptr), 0u);
    EXPECT_EQ(out, (Quad{1, kSentinel, kSentinel, kSentinel}));
    EXPECT_EQ(cvn_np_subslot_to_np_list(5, &out[2], &out[3]), 0u);
    EXPECT_EQ(out, (Quad{1, kSentinel, kNps, 0}));
    EXPECT_EQ(cvn_np_subslot_to_np_list(0, nullptr, &out[3]), kInvalid);
    EXPECT_EQ(cvn_np_subslot_to_np_list(0, &out[2], nullptr), kInvalid);
    EXPECT_EQ(cvn_np_set_if_subsys_type(3, 7), 0u);
    EXPECT_EQ(cvn_np_to_cpu_port_map(0), 3u);
    EXPECT_EQ(cvn_np_to_cpu_port_map(9), 3u);
    EXPECT_DEATH(cvn_np_complex_to_subslot(kNps), Report("np_complex < cvn_np_how_many()"));
    EXPECT_DEATH(cvn_np_complex_to_subslot_list(kNps, &out[0], &out[1]),
                 Report("np_complex < cvn_np_how_many()"));
    EXPECT_DEATH(cvn_np_complex_to_np(kNps, 0), Report("np_complex < cvn_np_how_many()"));
}

TEST_F(BriscaTest, FrontPortEncodingKeepsCageAndPortNibbles)
{
    EXPECT_EQ(cvn_np_lib_set_subslot_phy_port(3, 0x135), 0x35u);
    EXPECT_EQ(cvn_np_lib_set_subslot_ifsubinst_ifsubinst_port(2, 3, 5), 0x35u);
    EXPECT_EQ(cvn_np_lib_set_subslot_ifsubinst_ifsubinst_port(0, 3, 21), 0x35u);
    EXPECT_EQ(cvn_np_lib_set_subslot_ifsubinst_ifsubinst_port(0, 17, 0), 0x10u);
    for (uint32_t f : {0x35u, 0x1235u}) {
        EXPECT_EQ(cvn_np_lib_get_subslot(f), 0u);
        EXPECT_EQ(cvn_np_lib_get_subslot_port(f), 0x35u);
        EXPECT_EQ(cvn_np_lib_get_port(f), 0x35u);
        EXPECT_EQ(cvn_np_lib_get_ifsubinst(f), 3u);
        EXPECT_EQ(cvn_np_lib_get_ifsubinst_port(f), 5u);
    }
    EXPECT_EQ(cvn_np_lib_get_phys_port_tuple45(CVN_NP_PORT_TYPE_10GE, 0, 3, 5), 0x35u);
    EXPECT_EQ(cvn_np_lib_get_phys_port_tuple45(CVN_NP_PORT_TYPE_40GE, 1, 7, 1), 0x71u);
    EXPECT_EQ(cvn_np_lib_get_phys_port_tuple45(CVN_NP_PORT_TYPE_10GE, 0, 3, 16), 0x40u);
    EXPECT_EQ(cvn_np_lib_get_phys_port_tuple45(CVN_NP_PORT_TYPE_100GE, 0, 7, 3), 0x70u);
    for (uint32_t other : {0u, 2u, 5u, 0x103u}) {
        EXPECT_EQ(cvn_np_lib_get_phys_port_tuple45(other, 0, 7, 3), 255u);
    }
}

TEST_F(BriscaTest, FrontPortCageDecodeReportsCagesBeyondTheCard)
{
    uint32_t cage = kSentinel;
    EXPECT_EQ(aux_cvn_np_front_port_to_ifsubinst(0x7A, &cage), 0u);
    EXPECT_EQ(cage, 7u);
    EXPECT_EQ(aux_cvn_np_front_port_to_ifsubinst(0x8A, &cage), CVN_NP_EINVAL);
    EXPECT_EQ(cage, 8u);
    EXPECT_EQ(aux_cvn_np_front_port_to_ifsubinst(0x10A, &cage), 0u);
    EXPECT_EQ(cage, 0u);
    EXPECT_EQ(aux_cvn_np_front_port_to_ifsubinst(0x00, nullptr), CVN_NP_EINVAL);
}

} // namespace
