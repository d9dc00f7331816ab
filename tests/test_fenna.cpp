// fenna: six cages, three NPs, one subslot; cages 2n and 2n+1 belong to NP n.
// It knows three module types only, counts NP-local ports of a type per NP,
// refuses NP-local ports above 254 and has no cage-decode operation.
#include "test_support.h"

namespace {

using namespace cvn_test;

constexpr uint32_t kCages = 6;
constexpr uint32_t kNps = 3;
constexpr uint32_t kFailStatus = 0x0BADu;

std::string Report(const char *condition) {
    return ReportLine("cvn_np_lib_fenna.cpp", condition);
}

uint32_t PortsPerCage(uint32_t ifsub_type) {
    switch (ifsub_type) {
    case k100G: return 1;
    case k40G: return 2;
    case k10G: return 10;
    default: return 0;
    }
}

class FennaTest : public LibTest {
  protected:
    FennaTest() : LibTest(0x3D0267) {}
};

TEST_F(FennaTest, CardSummaryDescribesSixCagesOnThreeNps) {
    EXPECT_EQ(cvn_np_version_get(), &fenna_card_version);
    EXPECT_EQ(fenna_card_version.ver_major, 5);
    EXPECT_EQ(fenna_card_version.ver_minor, 'c');
    EXPECT_EQ(cvn_max_mtu(), 9216u);
    EXPECT_EQ(cvn_np_how_many(), kNps);
    EXPECT_EQ(cvn_np_chip_how_many(), kNps);
    const subslot_info *s = cvn_np_subslot_info_get();
    ASSERT_NE(s, nullptr);
    EXPECT_EQ(s->num_of_subslots, 1);
    EXPECT_EQ(s->max_ports_per_subslot, 10);
    EXPECT_EQ(s->max_of_ifsubsys_per_subslot, kCages);
    EXPECT_EQ(s->spare, 255);
    EXPECT_EQ(ListOf(cvn_np_port_info_subslot(0)), (List{{kCages, CVN_NP_PORT_TYPE_COMBO}}));
    EXPECT_DEATH(cvn_np_port_info_subslot(1), Report("subslot < fenna_card_np_info->num_subslot"));
    EXPECT_EQ(cvn_np_to_cpu_port_map(2), 3u);
    EXPECT_EQ(cvn_np_set_if_subsys_type(0, 0), 0u);
    uint32_t out = kSentinel;
    EXPECT_EQ(cvn_np_first_phys_port_on_np(0, &out), kInvalid);
    EXPECT_EQ(out, kSentinel);
}

TEST_F(FennaTest, CardPortInfoStopsAtTheFirstCageReportingAnyType) {
    EXPECT_EQ(cvn_np_port_info_get(), fenna_dummy_port_info);
    Plug(4, k40G);
    Plug(5, k10G);
    EXPECT_EQ(ListOf(cvn_np_port_info_get()), (List{{2, CVN_NP_PORT_TYPE_40GE}}));
    Plug(1, k40GAlt);  // a type fenna has no list for still ends the scan
    EXPECT_EQ(cvn_np_port_info_get(), fenna_dummy_port_info);
}

TEST_F(FennaTest, CagePortInfoKnowsThreeModuleTypes) {
    const std::vector<std::pair<uint32_t, List>> cases = {
        {k100G, {{1, CVN_NP_PORT_TYPE_100GE}}}, {k40G, {{2, CVN_NP_PORT_TYPE_40GE}}},
        {k10G, {{10, CVN_NP_PORT_TYPE_10GE}}},  {k40GAlt, {}}, {kNone, {}},
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
    Fail(2, kFailStatus);
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

TEST_F(FennaTest, FrontPortMapsToCageNpAndParityNpPort) {
    for (const Speed &s : Speeds()) {
        PlugAll(kCages, s.ifsub_type);
        for (uint32_t c = 0; c < kCages; ++c) {
            for (uint32_t p = 0; p < s.ports; ++p) {
                const uint32_t f = Front(c, p);
                SCOPED_TRACE(testing::Message() << s.name << " front 0x" << std::hex << f);
                EXPECT_EQ(cvn_np_front_port_to_np(f), NpOfCage(c));
                EXPECT_EQ(cvn_np_front_port_to_np_port(f), NpPort(s, c, p));
                EXPECT_EQ(cvn_np_front_port_to_port_type(f), s.port_type);
                uint32_t fp = kSentinel, pt = kSentinel;
                EXPECT_EQ(cvn_np_front_port_to_face_plate_port(f, &fp, &pt), 0u);
                EXPECT_EQ(fp, f);
                EXPECT_EQ(pt, s.port_type);
                uint32_t np = kSentinel, npp = kSentinel;
                fp = pt = kSentinel;
                EXPECT_EQ(cvn_np_front_port_mapping_info(f, &np, &npp, &fp, &pt), 0u);
                EXPECT_EQ(np, NpOfCage(c));
                EXPECT_EQ(npp, NpPort(s, c, p));
                EXPECT_EQ(fp, f);
                EXPECT_EQ(pt, s.port_type);
            }
        }
    }
}

TEST_F(FennaTest, FrontPortOfAnUnusableCageEndsInTheAssertions) {
    Plug(0, k10G);
    Plug(1, k40G);
    Plug(2, k100G);
    Plug(3, k40GAlt);
    Fail(5, kFailStatus);
    EXPECT_DEATH(cvn_np_front_port_to_np(0x0A), Report("index < fenna_card_np_info->port_subslot_10g"));
    EXPECT_DEATH(cvn_np_front_port_to_np(0x12), Report("index < fenna_card_np_info->port_subslot_40g"));
    EXPECT_DEATH(cvn_np_front_port_to_np(0x21), Report("index < fenna_card_np_info->port_subslot_100g"));
    EXPECT_DEATH(cvn_np_front_port_to_np(0x60), Report("cage_id.ifsubsys < fenna_card_np_info->num_cage"));
    for (uint32_t f : {0x30u, 0x40u, 0x50u}) {  // 40GE alt, empty, failed query
        SCOPED_TRACE(testing::Message() << "front 0x" << std::hex << f);
        EXPECT_DEATH(cvn_np_front_port_to_np(f), Report("0"));
        EXPECT_DEATH(cvn_np_front_port_to_np_port(f), Report("0"));
        EXPECT_DEATH(cvn_np_front_port_to_port_type(f), Report("0"));
    }
    uint32_t out = 0;
    EXPECT_DEATH(cvn_np_front_port_to_face_plate_port(0x40, &out, &out), Report("0"));
    uint32_t np = kSentinel, npp = kSentinel, fp = kSentinel, pt = kSentinel;
    EXPECT_EQ(cvn_np_front_port_to_face_plate_port(0x51, &fp, &pt), kFailStatus);
    EXPECT_EQ(cvn_np_front_port_mapping_info(0x51, &np, &npp, &fp, &pt), kFailStatus);
    EXPECT_EQ(np, kSentinel);
    EXPECT_EQ(npp, kSentinel);
    EXPECT_EQ(fp, kSentinel);
    EXPECT_EQ(pt, kSentinel);
    EXPECT_EQ(cvn_np_front_port_to_face_plate_port(0x01, nullptr, &pt), kInvalid);
}

TEST_F(FennaTest, LocalPortCountAddsOneCageWorthPerPopulatedCage) {
    const std::vector<std::pair<uint32_t, uint32_t>> cages = {
        {k10G, k10G}, {k100G, k40G}, {kNone, kNone}, {kNone, k10G}, {1, k40G}, {k100G, 1},
    };
    for (uint32_t n = 0; n < kNps; ++n) {
        for (const auto &[even, odd] : cages) {
            cvn_np_sim_reset();
            PlugAll(kCages, k10G);
            for (auto [cage, type] : {std::pair{2 * n, even}, std::pair{2 * n + 1, odd}}) {
                if (type == 1) Fail(cage, kFailStatus); else Plug(cage, type);
            }
            SCOPED_TRACE(testing::Message() << "np " << n << std::hex << " " << even << " " << odd);
            EXPECT_EQ(cvn_np_info_num_local_ports(n), PortsPerCage(even) + PortsPerCage(odd));
        }
    }
    cvn_np_sim_reset();
    Plug(3, k40GAlt);
    EXPECT_DEATH(cvn_np_info_num_local_ports(1), Report("0"));
    EXPECT_DEATH(cvn_np_info_num_local_ports(kNps), Report("np_id < cvn_np_how_many()"));
}

TEST_F(FennaTest, LocalPortCountOfATypeIsPerNp) {
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

TEST_F(FennaTest, NpLocalPortMapsBackToFrontPortFromTablesAlone) {
    for (const Speed &s : Speeds()) {
        for (uint32_t c = 0; c < kCages; ++c) {
            for (uint32_t p = 0; p < s.ports; ++p) {
                const uint32_t n = NpOfCage(c), npp = NpPort(s, c, p);
                SCOPED_TRACE(testing::Message() << s.name << " np " << n << " np_port " << npp);
                uint32_t fp = kSentinel, pt = kSentinel, f = kSentinel;
                EXPECT_EQ(cvn_np_info_to_fplate_porttype(n, npp, &fp, &pt), 0u);
                EXPECT_EQ(fp, Front(c, p));
                EXPECT_EQ(pt, s.port_type);
                EXPECT_EQ(cvn_np_info_to_front_port(n, npp, &f), 0u);
                EXPECT_EQ(f, Front(c, p));
            }
        }
    }
    EXPECT_EQ(cvn_np_sim_ifsubsys_queries(), 0u);
}

TEST_F(FennaTest, NpLocalPortAbove254IsRejectedAndUnmatchedOnesLeaveOutputsAlone) {
    struct Case {
        uint32_t np, np_port, result;
    };
    for (const Case &k : {Case{0, 254, 0}, Case{1, 202, 0}, Case{2, 150, 0}, Case{0, 98, 0},
                          Case{1, 255, kInvalid}, Case{0, 0x100C0, kInvalid},
                          Case{2, 0xFFFFFFFF, kInvalid}, Case{kNps, 117, kInvalid}}) {
        SCOPED_TRACE(testing::Message() << "np " << k.np << " np_port " << k.np_port);
        uint32_t fp = kSentinel, pt = kSentinel, f = kSentinel;
        EXPECT_EQ(cvn_np_info_to_fplate_porttype(k.np, k.np_port, &fp, &pt), k.result);
        EXPECT_EQ(cvn_np_info_to_front_port(k.np, k.np_port, &f), k.result);
        EXPECT_EQ(fp, kSentinel);
        EXPECT_EQ(pt, kSentinel);
        EXPECT_EQ(f, kSentinel);
    }
}

TEST_F(FennaTest, NpLocalPortSearchKnowsThreeTypes) {
    uint32_t f = kSentinel, fp = kSentinel, pt = kSentinel;
    aux_cvn_np_info_to_mapping_info(1, 195, k10G, &f, &fp, &pt);
    EXPECT_EQ(f, 0x33u);
    EXPECT_EQ(fp, 0x33u);
    EXPECT_EQ(pt, CVN_NP_PORT_TYPE_10GE);
    f = kSentinel;
    aux_cvn_np_info_to_mapping_info_fenna(2, 100, k40G, &f, nullptr, nullptr);
    EXPECT_EQ(f, 0x41u);
    f = fp = pt = kSentinel;
    for (uint32_t n = 0; n < kNps; ++n) aux_cvn_np_info_to_mapping_info(n, 202, k10G, &f, &fp, &pt);
    EXPECT_EQ(f, kSentinel);
    EXPECT_EQ(fp, kSentinel);
    EXPECT_EQ(pt, kSentinel);
    EXPECT_DEATH(aux_cvn_np_info_to_mapping_info(0, 97, k40GAlt, &f, &fp, &pt), Report("0"));
    EXPECT_DEATH(aux_cvn_np_info_to_mapping_info(kNps, 117, k100G, &f, &fp, &pt),
                 Report("np_num < fenna_card_np_info->num_complex"));

    const port_mapping_entry e[] = {{0x10, 0, 5, 0x11, 1}, {0x20, 0, 7, 0x21, 3},
                                    {0x30, 1, 7, 0x31, 4}};
    const port_mapping_entry *const entries[] = {&e[0], &e[1], &e[2]};
    f = fp = pt = kSentinel;
    aux_np_port_to_mapping_info(entries, 7, 1, &f, &fp, &pt);
    EXPECT_EQ(f, kSentinel);
    aux_np_port_to_mapping_info_fenna(entries, 7, 3, &f, &fp, &pt);
    EXPECT_EQ(f, 0x20u);
    EXPECT_EQ(fp, 0x21u);
    EXPECT_EQ(pt, 3u);
}

TEST_F(FennaTest, FirstPortOfNpNeedsAKnownTypeInItsFirstPopulatedCage) {
    struct Case {
        uint32_t even, odd;  // 1: the query fails
        uint32_t result, port_type;
    };
    const std::vector<Case> cases = {
        {k10G, kNone, 0, CVN_NP_PORT_TYPE_10GE}, {kNone, k100G, 0, CVN_NP_PORT_TYPE_100GE},
        {k40G, k10G, 0, CVN_NP_PORT_TYPE_40GE},  {k40GAlt, k10G, kInvalid, 0},
        {kNone, kNone, kInvalid, 0},             {1, k10G, kFailStatus, 0},
        {kNone, 1, kFailStatus, 0},              {k100G, 1, 0, CVN_NP_PORT_TYPE_100GE},
    };
    for (uint32_t n = 0; n < kNps; ++n) {
        for (const Case &k : cases) {
            cvn_np_sim_reset();
            PlugAll(kCages, k40G);
            for (auto [cage, type] : {std::pair{2 * n, k.even}, std::pair{2 * n + 1, k.odd}}) {
                if (type == 1) Fail(cage, kFailStatus); else Plug(cage, type);
            }
            SCOPED_TRACE(testing::Message() << "np " << n << std::hex << " " << k.even << " " << k.odd);
            uint32_t f = kSentinel, fp = kSentinel, pt = kSentinel;
            EXPECT_EQ(cvn_np_first_front_port_on_np(n, &f), k.result);
            EXPECT_EQ(cvn_np_first_fplate_porttype_on_np(n, &pt, &fp), k.result);
            const bool found = k.result == 0;
            EXPECT_EQ(f, found ? Front(2 * n, 0) : kSentinel);
            EXPECT_EQ(fp, found ? Front(2 * n, 0) : kSentinel);
            EXPECT_EQ(pt, found ? k.port_type : kSentinel);
        }
    }
    uint32_t out = 0;
    EXPECT_DEATH(cvn_np_first_front_port_on_np(0, nullptr), Report("phys_front_port != NULL"));
    EXPECT_DEATH(cvn_np_first_front_port_on_np(kNps, &out), Report("np_id < cvn_np_how_many()"));
    EXPECT_DEATH(cvn_np_first_fplate_porttype_on_np(0, nullptr, &out), Report("port_type != NULL"));
    EXPECT_DEATH(cvn_np_first_fplate_porttype_on_np(0, &out, nullptr), Report("fplate_port != NULL"));
    EXPECT_DEATH(cvn_np_first_fplate_porttype_on_np(kNps, &out, &out),
                 Report("np_id < cvn_np_how_many()"));
}

TEST_F(FennaTest, FirstPortOfNpForAType) {
    for (uint32_t n = 0; n < kNps; ++n) {
        for (const Speed &s : Speeds()) {
            uint32_t f = kSentinel, fp = kSentinel, pt = kSentinel;
            EXPECT_EQ(aux_cvn_np_first_port_on_np(n, 0, s.ifsub_type, &f, &fp, &pt), 0u);
            EXPECT_EQ(f, Front(2 * n, 0));
            EXPECT_EQ(fp, Front(2 * n, 0));
            EXPECT_EQ(pt, s.port_type);
        }
    }
    uint32_t f = kSentinel, fp = kSentinel, pt = kSentinel;
    EXPECT_EQ(aux_cvn_np_first_port_on_np(0, 0, k40GAlt, &f, &fp, &pt), kInvalid);
    EXPECT_EQ(aux_cvn_np_first_port_on_np(kNps, 0, k10G, &f, &fp, &pt), kInvalid);
    EXPECT_EQ(f, kSentinel);
    EXPECT_EQ(fp, kSentinel);
    EXPECT_EQ(pt, kSentinel);
}

TEST_F(FennaTest, FaceplatePortOfEachTypeMapsToNpAndFrontPort) {
    for (const Speed &s : Speeds()) {
        for (uint32_t c = 0; c < kCages; ++c) {
            for (uint32_t p = 0; p < s.ports; ++p) {
                const uint32_t fp = Front(c, p);
                SCOPED_TRACE(testing::Message() << s.name << " fplate 0x" << std::hex << fp);
                EXPECT_EQ(cvn_faceplate_porttype_to_np(s.port_type, fp), NpOfCage(c));
                EXPECT_EQ(cvn_faceplate_porttype_to_np_port(s.port_type, fp), NpPort(s, c, p));
                EXPECT_EQ(cvn_faceplate_porttype_to_phys_port(s.port_type, fp), fp);
                uint32_t np = kSentinel, npp = kSentinel, f = kSentinel;
                EXPECT_EQ(cvn_faceplate_porttype_mapping_info(s.port_type, fp, &np, &npp, &f), 0u);
                EXPECT_EQ(np, NpOfCage(c));
                EXPECT_EQ(npp, NpPort(s, c, p));
                EXPECT_EQ(f, fp);
            }
        }
    }
    for (uint32_t c = 0; c < kCages; ++c) {
        EXPECT_DEATH(aux_cvn_faceplate_to_mapping_info(c, Front(c, 10), CVN_NP_PORT_TYPE_10GE,
                                                       nullptr, nullptr, nullptr),
                     Report("index < fenna_card_np_info->port_subslot_10g"));
    }
    EXPECT_DEATH(cvn_faceplate_porttype_to_np(CVN_NP_PORT_TYPE_40GE, 0x52),
                 Report("index < fenna_card_np_info->port_subslot_40g"));
    EXPECT_DEATH(cvn_faceplate_porttype_to_np(CVN_NP_PORT_TYPE_100GE, 0x51),
                 Report("index < fenna_card_np_info->port_subslot_100g"));
    EXPECT_DEATH(cvn_faceplate_porttype_to_np(CVN_NP_PORT_TYPE_NONE, 0x00), Report("0"));
    EXPECT_DEATH(cvn_faceplate_porttype_to_np(0x101, 0x00), Report("0"));
    EXPECT_DEATH(cvn_faceplate_porttype_to_np(CVN_NP_PORT_TYPE_10GE, 0x60),
                 Report("ifsubsys_num < fenna_card_np_info->num_cage"));
}

TEST_F(FennaTest, MappingOfAFrontPortOfAKnownType) {
    uint32_t np = kSentinel, npp = kSentinel, fp = kSentinel, pt = kSentinel;
    aux_cvn_np_front_port_to_mapping_info(5, 0x59, k10G, &np, &npp, &fp, &pt);
    EXPECT_EQ(np, 2u);
    EXPECT_EQ(npp, 201u);
    EXPECT_EQ(fp, 0x59u);
    EXPECT_EQ(pt, CVN_NP_PORT_TYPE_10GE);
    EXPECT_DEATH(aux_cvn_np_front_port_to_mapping_info(1, 0x10, k40GAlt, &np, &npp, &fp, &pt),
                 Report("0"));
    EXPECT_DEATH(aux_cvn_np_front_port_to_mapping_info(6, 0x10, k40GAlt, &np, &npp, &fp, &pt),
                 Report("ifsubsys_num < fenna_card_np_info->num_cage"));
    EXPECT_DEATH(aux_cvn_np_front_port_to_mapping_info(0, 0x02, k40G, &np, &npp, &fp, &pt),
                 Report("index < fenna_card_np_info->port_subslot_40g"));
}

TEST_F(FennaTest, CageQueryAsksThePlatformForSubslotZeroAndTheCage) {
    for (uint32_t c = 0; c < kCages; ++c) {
        Plug(c, k100G + c);
        ASSERT_EQ(cvn_np_sim_set_ifsubsys(1, c, k10G), 0);
    }
    for (uint32_t c = 0; c < kCages; ++c) {
        uint32_t sub = kSentinel, cage = kSentinel, type = kSentinel;
        EXPECT_EQ(aux_cvn_np_front_port_to_ifsubsys(Front(c, 9), &sub, &cage, &type), 0u);
        EXPECT_EQ(sub, 0u);
        EXPECT_EQ(cage, c);
        EXPECT_EQ(type, k100G + c);
    }
    cvn_np_sim_fail_all(kFailStatus);
    uint32_t sub = kSentinel, cage = kSentinel, type = kSentinel;
    EXPECT_EQ(aux_cvn_np_front_port_to_ifsubsys(0x10, &sub, &cage, &type), kFailStatus);
    EXPECT_EQ(sub, kSentinel);
    EXPECT_EQ(cage, kSentinel);
    EXPECT_EQ(type, kSentinel);
    EXPECT_DEATH(aux_cvn_np_front_port_to_ifsubsys(0x60, &sub, &cage, &type),
                 Report("cage_id.ifsubsys < fenna_card_np_info->num_cage"));
}

TEST_F(FennaTest, ComplexesSubslotsAndEncoding) {
    for (uint32_t n = 0; n < kNps; ++n) {
        EXPECT_EQ(cvn_np_complex_to_subslot(n), 0u);
        EXPECT_EQ(cvn_np_complex_to_np(n, 1), n);
        uint32_t count = kSentinel, first = kSentinel;
        EXPECT_EQ(cvn_np_complex_to_subslot_list(n, &count, &first), 0u);
        EXPECT_EQ(count, 1u);
        EXPECT_EQ(first, 0u);
    }
    uint32_t count = kSentinel, first = kSentinel;
    EXPECT_EQ(cvn_np_subslot_to_np_list(0, &count, &first), 0u);
    EXPECT_EQ(count, kNps);
    EXPECT_EQ(first, 0u);
    EXPECT_EQ(cvn_np_subslot_to_np_list(0, nullptr, &first), kInvalid);
    EXPECT_DEATH(cvn_np_complex_to_subslot(kNps), Report("np_complex < cvn_np_how_many()"));
    EXPECT_DEATH(cvn_np_complex_to_subslot_list(kNps, nullptr, nullptr),
                 Report("np_complex < cvn_np_how_many()"));
    EXPECT_DEATH(cvn_np_complex_to_np(kNps, 0), Report("np_complex < cvn_np_how_many()"));

    EXPECT_EQ(cvn_np_lib_set_subslot_phy_port(0, 0x259), 0x59u);
    EXPECT_EQ(cvn_np_lib_set_subslot_ifsubinst_ifsubinst_port(0, 5, 0x19), 0x59u);
    EXPECT_EQ(cvn_np_lib_get_subslot(0x59), 0u);
    EXPECT_EQ(cvn_np_lib_get_port(0x159), 0x59u);
    EXPECT_EQ(cvn_np_lib_get_subslot_port(0x159), 0x59u);
    EXPECT_EQ(cvn_np_lib_get_ifsubinst(0x159), 5u);
    EXPECT_EQ(cvn_np_lib_get_ifsubinst_port(0x159), 9u);
    EXPECT_EQ(cvn_np_lib_get_phys_port_tuple45(CVN_NP_PORT_TYPE_10GE, 0, 5, 9), 0x59u);
    EXPECT_EQ(cvn_np_lib_get_phys_port_tuple45(CVN_NP_PORT_TYPE_100GE, 0, 5, 9), 0x50u);
    EXPECT_EQ(cvn_np_lib_get_phys_port_tuple45(CVN_NP_PORT_TYPE_COMBO, 0, 5, 9), 255u);
}

TEST_F(FennaTest, FrontPortCageDecodeIsNotProvided) {
    EXPECT_EQ(cvn_np_api_fenna.aux_cvn_np_front_port_to_ifsubinst, nullptr);
    uint32_t cage = kSentinel;
    EXPECT_EQ(aux_cvn_np_front_port_to_ifsubinst(0x35, &cage), kInvalid);
    EXPECT_EQ(aux_cvn_np_front_port_to_ifsubinst(0x85, &cage), kInvalid);
    EXPECT_EQ(cage, kSentinel);
}

}  // namespace
