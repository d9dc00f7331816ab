// brisca_4p: four cages, four NPs, one subslot; cage n is the one cage of
// NP n and carries the NP-local ports of brisca's even cages.  The bounds of
// the faceplate indexes stay those of the eight-cage card.
#include <cstring>

#include "test_support.h"

namespace {

using namespace cvn_test;

constexpr uint32_t kCages = 4;
constexpr uint32_t kNps = 4;

std::string Report(const char *condition)
{
    return ReportLine("cvn_np_lib_brisca_4p.cpp", condition);
}

// Every module brisca_4p takes; each cage uses the even-cage NP-local ports.
std::vector<Speed> Modules()
{
    auto speeds = Speeds();
    speeds.push_back({"40GE alt", k40GAlt, CVN_NP_PORT_TYPE_40GE, 2, 99, 96});
    return speeds;
}
uint32_t NpPortOf(const Speed &s, uint32_t port) { return s.even_base + port; }

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

class Brisca4pTest : public LibTest {
  protected:
    Brisca4pTest() : LibTest(0x3D0278) {}
};

TEST_F(Brisca4pTest, EveryCardTypeOfTheFamilySelectsTheFourCageCard)
{
    std::vector<uint32_t> types;
    for (uint32_t t = 0x3D0278; t <= 0x3D0281; ++t)
        types.push_back(t);
    for (uint32_t t = 0x3D02B4; t <= 0x3D02BD; ++t)
        types.push_back(t);
    ASSERT_EQ(types.size(), 20u);
    for (uint32_t t : types) {
        SCOPED_TRACE(testing::Message() << "card 0x" << std::hex << t);
        ASSERT_EQ(cvn_np_lib_init(0x3D0274), 0u); // brisca between the runs
        ASSERT_EQ(cvn_np_lib_init(t), 0u);
        EXPECT_EQ(card_np_api, &cvn_np_api_brisca_4p);
        EXPECT_EQ(cvn_np_subslot_info_get()->max_of_ifsubsys_per_subslot, kCages);
    }
    for (uint32_t neighbour : {0x3D0276u, 0x3D02B3u}) {
        ASSERT_EQ(cvn_np_lib_init(neighbour), 0u);
        EXPECT_EQ(card_np_api, &cvn_np_api_brisca);
    }
    std::array<void (*)(), CVN_NP_API_SLOTS> slots{};
    static_assert(sizeof(slots) == sizeof(cvn_np_api));
    std::memcpy(slots.data(), &cvn_np_api_brisca_4p, sizeof(slots));
    for (size_t i = 0; i < slots.size(); ++i)
        EXPECT_NE(slots[i], nullptr) << "slot " << i;
}

TEST_F(Brisca4pTest, CardSummaryDescribesFourCagesOnFourNps)
{
    const card_version *v = cvn_np_version_get();
    ASSERT_EQ(v, &brisca_4p_card_version);
    EXPECT_EQ((Quad{v->ver_major, v->ver_minor, cvn_max_mtu(), cvn_np_how_many()}),
              (Quad{5, 'c', 9216, kNps}));
    EXPECT_EQ(cvn_np_chip_how_many(), kNps);
    const subslot_info *s = cvn_np_subslot_info_get();
    ASSERT_EQ(s, &brisca_4p_card_subslot_info);
    EXPECT_EQ((Quad{s->num_of_subslots, s->max_ports_per_subslot, s->max_of_ifsubsys_per_subslot,
                    s->spare}),
              (Quad{1, 10, kCages, 255}));
    EXPECT_EQ(ListOf(cvn_np_port_info_subslot(0)), (List{{kCages, CVN_NP_PORT_TYPE_COMBO}}));
    EXPECT_DEATH(cvn_np_port_info_subslot(1),
                 Report("subslot < brisca_4p_card_np_info->num_subslot"));
}

TEST_F(Brisca4pTest, CardPortInfoIsTheCageListWithoutAskingAnyCage)
{
    for (uint32_t type : {kNone, k10G, k100G, kFails}) {
        cvn_np_sim_reset();
        PlugAll(kCages, type);
        EXPECT_EQ(cvn_np_port_info_get(), port_info_brisca_4p_combo);
        EXPECT_EQ(ListOf(cvn_np_port_info_get()), (List{{kCages, CVN_NP_PORT_TYPE_COMBO}}));
        EXPECT_EQ(cvn_np_sim_ifsubsys_queries(), 0u);
    }
}

TEST_F(Brisca4pTest, CagePortInfoFollowsTheReportedModule)
{
    const std::vector<std::pair<uint32_t, List>> cases = {
        {k100G, {{1, CVN_NP_PORT_TYPE_100GE}}},
        {k40G, {{2, CVN_NP_PORT_TYPE_40GE}}},
        {k40GAlt, {{2, CVN_NP_PORT_TYPE_40GE}}},
        {k10G, {{10, CVN_NP_PORT_TYPE_10GE}}},
        {kNone, {}},
        {0x10030, {}},
    };
    for (const auto &[type, list] : cases) {
        for (uint32_t c = 0; c < kCages; ++c) {
            SCOPED_TRACE(testing::Message() << "cage " << c << " type " << std::hex << type);
            Plug(c, type);
            EXPECT_EQ(ListOf(cvn_np_port_info_from_subslot_ifsubinst(0, c)), list);
            EXPECT_EQ(ListOf(aux_cvn_np_port_info_get(0, c, type)), list);
        }
    }
    EXPECT_EQ(aux_cvn_np_port_info_get(0, 3, kNone), brisca_4p_dummy_port_info);
    Plug(1, kFails);
    EXPECT_EQ(cvn_np_port_info_from_subslot_ifsubinst(0, 1), brisca_4p_dummy_port_info);
    EXPECT_DEATH(cvn_np_port_info_from_subslot_ifsubinst(1, 0),
                 Report("subslot < brisca_4p_card_np_info->num_subslot"));
    EXPECT_DEATH(cvn_np_port_info_from_subslot_ifsubinst(0, 4),
                 Report("ifsubinst < brisca_4p_card_np_info->num_cage"));
    EXPECT_DEATH(aux_cvn_np_port_info_get(1, 0, k10G),
                 Report("subslot_num < brisca_4p_card_np_info->num_subslot"));
    EXPECT_DEATH(aux_cvn_np_port_info_get(0, 4, k10G),
                 Report("ifsubsys_num < brisca_4p_card_np_info->num_cage"));
}

TEST_F(Brisca4pTest, ExportedTablesGiveEveryCageTheEvenCagePortsOfItsNp)
{
    const port_mapping_entry *const mapping[3] = {cvn_np_port_mapping_brisca_4p_100g,
                                                  cvn_np_port_mapping_brisca_4p_40g,
                                                  cvn_np_port_mapping_brisca_4p_10g};
    const port_mapping_entry *const *const local[3] = {np_local_port_map_brisca_4p_100g,
                                                       np_local_port_map_brisca_4p_40g,
                                                       np_local_port_map_brisca_4p_10g};
    const int32_t *const index[3] = {brisca_4p_phys_2_fplate_cage_100GE,
                                     brisca_4p_phys_2_fplate_cage_40GE,
                                     brisca_4p_phys_2_fplate_cage_10GE};
    for (size_t i = 0; i < 3; ++i) {
        const Speed &s = Speeds()[i];
        SCOPED_TRACE(s.name);
        for (uint32_t c = 0; c < kCages; ++c) {
            for (uint32_t p = 0; p < 16; ++p) {
                const uint32_t pos = c * s.ports + p;
                EXPECT_EQ(index[i][Front(c, p)], p < s.ports ? int32_t(pos) : 255);
                if (p >= s.ports)
                    continue;
                const port_mapping_entry &e = mapping[i][pos];
                EXPECT_EQ((std::array<uint32_t, 5>{e.phys_front_port, e.np, e.np_port,
                                                   e.fplate_port, e.port_type}),
                          (std::array<uint32_t, 5>{Front(c, p), c, NpPortOf(s, p), Front(c, p),
                                                   s.port_type}));
                EXPECT_EQ(local[i][pos], &e); // NP c's block starts at c * ports
            }
        }
        const port_mapping_entry &end = mapping[i][kCages * s.ports];
        EXPECT_EQ((std::array<uint32_t, 5>{end.phys_front_port, end.np, end.np_port,
                                           end.fplate_port, end.port_type}),
                  (std::array<uint32_t, 5>{0xFF, 0xFF, 0xFF, 0xFF, 0xFF}));
    }
}

TEST_F(Brisca4pTest, FrontPortMapsToTheNpOfItsCage)
{
    for (const Speed &s : Modules()) {
        PlugAll(kCages, s.ifsub_type);
        for (uint32_t c = 0; c < kCages; ++c) {
            for (uint32_t p = 0; p < s.ports; ++p) {
                const uint32_t f = Front(c, p);
                SCOPED_TRACE(testing::Message() << s.name << " front 0x" << std::hex << f);
                EXPECT_EQ(cvn_np_front_port_to_np(f | 0x200), c);
                EXPECT_EQ(cvn_np_front_port_to_np_port(f), NpPortOf(s, p));
                EXPECT_EQ(cvn_np_front_port_to_port_type(f), s.port_type);
                Quad out = Untouched();
                EXPECT_EQ(cvn_np_front_port_to_face_plate_port(f, &out[2], &out[3]), 0u);
                EXPECT_EQ(out, (Quad{kSentinel, kSentinel, f, s.port_type}));
                EXPECT_EQ(cvn_np_front_port_mapping_info(f, &out[0], &out[1], &out[2], &out[3]),
                          0u);
                EXPECT_EQ(out, (Quad{c, NpPortOf(s, p), f, s.port_type}));
                out = Untouched();
                EXPECT_EQ(cvn_np_front_port_mapping_info(f, &out[0], nullptr, nullptr, nullptr),
                          0u);
                EXPECT_EQ(out, (Quad{c, kSentinel, kSentinel, kSentinel}));
            }
        }
    }
}

TEST_F(Brisca4pTest, FrontPortWithoutAPortOfTheModuleFailsItsSpeedIndex)
{
    Plug(0, k10G);
    Plug(1, k40G);
    Plug(2, k40GAlt);
    Plug(3, k100G);
    EXPECT_DEATH(cvn_np_front_port_to_np(0x0A),
                 Report("index < brisca_4p_card_np_info->port_subslot_10g"));
    EXPECT_DEATH(cvn_np_front_port_to_np_port(0x12),
                 Report("index < brisca_4p_card_np_info->port_subslot_40g"));
    EXPECT_DEATH(cvn_np_front_port_to_np(0x31),
                 Report("index < brisca_4p_card_np_info->port_subslot_100g"));
    EXPECT_DEATH(cvn_np_front_port_to_np(0x45),
                 Report("cage_id.ifsubsys < brisca_4p_card_np_info->num_cage"));
}

TEST_F(Brisca4pTest, FailedCageQueryGoesOnAsAnEmptyCageInEveryFrontPortAnswer)
{
    Plug(0, kNone);
    Plug(1, kFails);
    Plug(2, 0x10030); // a type the card has no tables for
    Quad out = Untouched();
    for (uint32_t f : {0x00u, 0x10u, 0x20u}) {
        SCOPED_TRACE(testing::Message() << "front 0x" << std::hex << f);
        EXPECT_DEATH(cvn_np_front_port_to_np(f), Report("0"));
        EXPECT_DEATH(cvn_np_front_port_to_np_port(f), Report("0"));
        EXPECT_DEATH(cvn_np_front_port_to_port_type(f), Report("0"));
        EXPECT_DEATH(cvn_np_front_port_to_face_plate_port(f, &out[0], &out[1]), Report("0"));
        EXPECT_DEATH(cvn_np_front_port_mapping_info(f, &out[0], &out[1], &out[2], &out[3]),
                     Report("0"));
    }
    EXPECT_EQ(cvn_np_front_port_to_face_plate_port(0x10, nullptr, &out[1]), kInvalid);
    EXPECT_EQ(cvn_np_front_port_to_face_plate_port(0x10, &out[0], nullptr), kInvalid);
    EXPECT_EQ(out, Untouched());
    EXPECT_EQ(cvn_np_sim_ifsubsys_queries(), 0u);
}

TEST_F(Brisca4pTest, LocalPortCountIsThatOfTheNpsOneCage)
{
    for (uint32_t n = 0; n < kNps; ++n) {
        for (uint32_t type : {k10G, k40G, k40GAlt, k100G, kNone, kFails}) {
            cvn_np_sim_reset();
            PlugAll(kCages, k10G); // the other NPs' cages must not count
            Plug(n, type);
            SCOPED_TRACE(testing::Message() << "np " << n << " type " << std::hex << type);
            EXPECT_EQ(cvn_np_info_num_local_ports(n), PortsCountedPerCage(type));
        }
        for (uint32_t type : {k10G, k40G, k40GAlt, k100G}) { // per cage, no cage asked
            EXPECT_EQ(aux_cvn_np_info_num_local_ports(0, n, type), PortsCountedPerCage(type));
        }
    }
    Plug(2, 0x10030);
    EXPECT_DEATH(cvn_np_info_num_local_ports(2), Report("0"));
    EXPECT_DEATH(cvn_np_info_num_local_ports(kNps), Report("np_id < cvn_np_how_many()"));
    EXPECT_DEATH(aux_cvn_np_info_num_local_ports(1, kNps, kNone),
                 Report("subslot_num < brisca_4p_card_np_info->num_subslot"));
    EXPECT_DEATH(aux_cvn_np_info_num_local_ports(0, kNps, kNone),
                 Report("np_num < brisca_4p_card_np_info->num_complex"));
    EXPECT_DEATH(aux_cvn_np_info_num_local_ports(0, 0, kNone), Report("0"));
}

TEST_F(Brisca4pTest, NpLocalAndFaceplatePortsMapFromTablesAlone)
{
    for (const Speed &s : Speeds()) {
        for (uint32_t c = 0; c < kCages; ++c) {
            for (uint32_t p = 0; p < s.ports; ++p) {
                const uint32_t npp = NpPortOf(s, p), f = Front(c, p);
                SCOPED_TRACE(testing::Message() << s.name << " cage " << c << " port " << p);
                Quad out = Untouched();
                EXPECT_EQ(cvn_np_info_to_fplate_porttype(c, npp, &out[0], &out[1]), 0u);
                EXPECT_EQ(cvn_np_info_to_front_port(c, npp, &out[2]), 0u);
                EXPECT_EQ(out, (Quad{f, s.port_type, f, kSentinel}));
                EXPECT_EQ(cvn_faceplate_porttype_to_np(s.port_type, f | 0x100), c);
                EXPECT_EQ(cvn_faceplate_porttype_to_np_port(s.port_type, f), npp);
                EXPECT_EQ(cvn_faceplate_porttype_to_phys_port(s.port_type, f), f);
                out = Untouched();
                EXPECT_EQ(
                    cvn_faceplate_porttype_mapping_info(s.port_type, f, &out[0], &out[1], &out[2]),
                    0u);
                EXPECT_EQ(out, (Quad{c, npp, f, kSentinel}));
            }
        }
    }
    EXPECT_EQ(cvn_np_sim_ifsubsys_queries(), 0u);
}

TEST_F(Brisca4pTest, NpLocalPortsOfAnOddCageDoNotExist)
{
    // brisca's second-cage ports (96..98, 116, 192..201) and ports past a block
    for (uint32_t n = 0; n < kNps; ++n) {
        for (uint32_t npp : {96u, 97u, 98u, 101u, 116u, 150u, 192u, 201u, 203u, 214u, 0x10075u}) {
            SCOPED_TRACE(testing::Message() << "np " << n << " np_port " << npp);
            Quad out = Untouched();
            EXPECT_EQ(cvn_np_info_to_fplate_porttype(n, npp, &out[0], &out[1]), 0u);
            EXPECT_EQ(cvn_np_info_to_front_port(n, npp, &out[2]), 0u);
            aux_cvn_np_info_to_mapping_info(n, npp, k10G, &out[0], &out[1], &out[3]);
            EXPECT_EQ(out, Untouched());
        }
    }
    Quad out = Untouched();
    EXPECT_EQ(cvn_np_info_to_fplate_porttype(kNps, 117, &out[0], &out[1]), kInvalid);
    EXPECT_EQ(cvn_np_info_to_front_port(kNps, 117, &out[2]), kInvalid);
    EXPECT_EQ(out, Untouched());
    for (uint32_t type : {k40G, k40GAlt}) {
        aux_cvn_np_info_to_mapping_info(3, 100, type, &out[0], &out[1], &out[2]);
        EXPECT_EQ(out, (Quad{0x31, 0x31, CVN_NP_PORT_TYPE_40GE, kSentinel}));
    }
    EXPECT_DEATH(aux_cvn_np_info_to_mapping_info(kNps, 117, k100G, &out[0], nullptr, nullptr),
                 Report("np_num < brisca_4p_card_np_info->num_complex"));
    EXPECT_DEATH(aux_cvn_np_info_to_mapping_info(0, 117, kNone, &out[0], nullptr, nullptr),
                 Report("0"));
    ExpectNpPortSearchStopsAtFirstMatchWithinCount(&aux_np_port_to_mapping_info);
}

TEST_F(Brisca4pTest, FirstPortOfNpAnswersZeroAndWritesOnlyForAKnownModule)
{
    const std::vector<std::pair<uint32_t, uint32_t>> cases = {
        {k10G, CVN_NP_PORT_TYPE_10GE},
        {k40G, CVN_NP_PORT_TYPE_40GE},
        {k40GAlt, CVN_NP_PORT_TYPE_40GE},
        {k100G, CVN_NP_PORT_TYPE_100GE},
        {kNone, 0},
        {kFails, 0},
        {0x10030, 0},
    };
    for (uint32_t n = 0; n < kNps; ++n) {
        for (const auto &[type, port_type] : cases) {
            cvn_np_sim_reset();
            PlugAll(kCages, k100G);
            Plug(n, type);
            SCOPED_TRACE(testing::Message() << "np " << n << " type " << std::hex << type);
            Quad out = Untouched();
            EXPECT_EQ(cvn_np_first_front_port_on_np(n, &out[0]), 0u);
            EXPECT_EQ(cvn_np_first_fplate_porttype_on_np(n, &out[2], &out[1]), 0u);
            const uint32_t f = Front(n, 0);
            EXPECT_EQ(out, port_type != 0 ? (Quad{f, f, port_type, kSentinel}) : Untouched());
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

TEST_F(Brisca4pTest, FirstPortOfNpForAType)
{
    for (uint32_t n = 0; n < kNps; ++n) {
        for (const Speed &s : Modules()) {
            Quad out = Untouched();
            EXPECT_EQ(aux_cvn_np_first_port_on_np(n, 9, s.ifsub_type, &out[0], &out[1], &out[2]),
                      0u);
            EXPECT_EQ(out, (Quad{Front(n, 0), Front(n, 0), s.port_type, kSentinel}));
        }
    }
    Quad out = Untouched();
    EXPECT_EQ(aux_cvn_np_first_port_on_np(0, 0, kNone, &out[0], &out[1], &out[2]), kInvalid);
    EXPECT_EQ(aux_cvn_np_first_port_on_np(0, 0, 0x10030, &out[0], &out[1], &out[2]), kInvalid);
    EXPECT_EQ(aux_cvn_np_first_port_on_np(kNps, 0, k10G, &out[0], &out[1], &out[2]), kInvalid);
    EXPECT_EQ(out, Untouched());
}

TEST_F(Brisca4pTest, FaceplatePortChecksCageThenTypeThenIndex)
{
    EXPECT_EQ(cvn_faceplate_porttype_to_np(CVN_NP_PORT_TYPE_100GE, 0x30), 3u);
    EXPECT_DEATH(cvn_faceplate_porttype_to_np(CVN_NP_PORT_TYPE_100GE, 0x40),
                 Report("ifsubsys_num < brisca_4p_card_np_info->num_cage"));
    EXPECT_DEATH(cvn_faceplate_porttype_to_np(CVN_NP_PORT_TYPE_100GE, 0x31),
                 Report("index < brisca_4p_card_np_info->port_subslot_100g"));
    // the index table ends at front port 64, below the eight-cage bounds
    EXPECT_DEATH(aux_cvn_faceplate_to_mapping_info(3, 0x45, CVN_NP_PORT_TYPE_10GE, nullptr, nullptr,
                                                   nullptr),
                 Report("index < brisca_4p_card_np_info->port_subslot_10g"));
    EXPECT_DEATH(aux_cvn_faceplate_to_mapping_info(0, 0x41, CVN_NP_PORT_TYPE_40GE, nullptr, nullptr,
                                                   nullptr),
                 Report("index < brisca_4p_card_np_info->port_subslot_40g"));
    EXPECT_DEATH(cvn_faceplate_porttype_to_np(CVN_NP_PORT_TYPE_COMBO, 0x0A), Report("0"));
    EXPECT_DEATH(cvn_faceplate_porttype_to_np(0x104, 0x30), Report("0"));
    EXPECT_DEATH(
        cvn_faceplate_porttype_mapping_info(CVN_NP_PORT_TYPE_NONE, 0x4A, nullptr, nullptr, nullptr),
        Report("ifsubsys_num < brisca_4p_card_np_info->num_cage"));
}

TEST_F(Brisca4pTest, MappingOfAFrontPortOfAKnownType)
{
    Quad out = Untouched();
    aux_cvn_np_front_port_to_mapping_info(3, 0x139, k10G, &out[0], &out[1], &out[2], &out[3]);
    EXPECT_EQ(out, (Quad{3, 213, 0x39, CVN_NP_PORT_TYPE_10GE})); // low 8 bits at 10GE
    out = Untouched();
    aux_cvn_np_front_port_to_mapping_info(2, 0x21, k40G, nullptr, &out[1], nullptr, nullptr);
    EXPECT_EQ(out, (Quad{kSentinel, 100, kSentinel, kSentinel}));
    EXPECT_DEATH(
        aux_cvn_np_front_port_to_mapping_info(3, 0x130, k100G, &out[0], nullptr, nullptr, nullptr),
        Report("index < brisca_4p_card_np_info->port_subslot_100g"));
    EXPECT_DEATH(
        aux_cvn_np_front_port_to_mapping_info(0, 0x40, k100G, &out[0], nullptr, nullptr, nullptr),
        Report("index < brisca_4p_card_np_info->port_subslot_100g"));
    EXPECT_DEATH(
        aux_cvn_np_front_port_to_mapping_info(0, 0x0A, kNone, &out[0], nullptr, nullptr, nullptr),
        Report("0"));
    EXPECT_DEATH(
        aux_cvn_np_front_port_to_mapping_info(4, 0x0A, kNone, &out[0], nullptr, nullptr, nullptr),
        Report("ifsubsys_num < brisca_4p_card_np_info->num_cage"));
}

TEST_F(Brisca4pTest, CageQueryAsksThePlatformForSubslotZeroAndTheCage)
{
    for (uint32_t c = 0; c < kCages; ++c) {
        Plug(c, k100G + c);
        ASSERT_EQ(cvn_np_sim_set_ifsubsys(1, c, k10G), 0);
        Quad out = Untouched();
        EXPECT_EQ(aux_cvn_np_front_port_to_ifsubsys(Front(c, 7) | 0x100, &out[0], &out[1], &out[2]),
                  0u);
        EXPECT_EQ(out, (Quad{0, c, k100G + c, kSentinel}));
    }
    Plug(2, kFails);
    Quad out = Untouched();
    EXPECT_EQ(aux_cvn_np_front_port_to_ifsubsys(0x20, &out[0], &out[1], &out[2]), kFailStatus);
    EXPECT_EQ(out, Untouched());
    EXPECT_DEATH(aux_cvn_np_front_port_to_ifsubsys(0x40, &out[0], &out[1], &out[2]),
                 Report("cage_id.ifsubsys < brisca_4p_card_np_info->num_cage"));
}

TEST_F(Brisca4pTest, ComplexesSubslotsAndEncoding)
{
    for (uint32_t n = 0; n < kNps; ++n) {
        Quad out = Untouched();
        EXPECT_EQ(cvn_np_complex_to_subslot_list(n, &out[0], &out[1]), 0u);
        EXPECT_EQ((Quad{out[0], out[1], cvn_np_complex_to_subslot(n), cvn_np_complex_to_np(n, 1)}),
                  (Quad{1, 0, 0, n}));
    }
    Quad out = Untouched();
    EXPECT_EQ(cvn_np_subslot_to_np_list(0, &out[2], &out[3]), 0u);
    EXPECT_EQ(out, (Quad{kSentinel, kSentinel, kNps, 0}));
    EXPECT_DEATH(cvn_np_complex_to_subslot(kNps), Report("np_complex < cvn_np_how_many()"));
    EXPECT_DEATH(cvn_np_complex_to_subslot_list(kNps, &out[0], &out[1]),
                 Report("np_complex < cvn_np_how_many()"));
    EXPECT_DEATH(cvn_np_complex_to_np(kNps, 0), Report("np_complex < cvn_np_how_many()"));

    EXPECT_EQ(cvn_np_lib_set_subslot_ifsubinst_ifsubinst_port(0, 2, 5), 0x25u);
    EXPECT_EQ((Quad{cvn_np_lib_get_subslot(0x125), cvn_np_lib_get_port(0x125),
                    cvn_np_lib_get_ifsubinst(0x125), cvn_np_lib_get_ifsubinst_port(0x125)}),
              (Quad{0, 0x25, 2, 5}));
    EXPECT_EQ(cvn_np_lib_get_phys_port_tuple45(CVN_NP_PORT_TYPE_100GE, 0, 3, 1), 0x30u);
    EXPECT_EQ(cvn_np_lib_get_phys_port_tuple45(CVN_NP_PORT_TYPE_COMBO, 0, 2, 9), 255u);
}

TEST_F(Brisca4pTest, FrontPortCageDecodeBoundIsTheFourthCage)
{
    struct Case {
        uint32_t front, cage, result;
    };
    for (const Case &k :
         {Case{0x3A, 3, 0}, Case{0x00, 0, 0}, Case{0x4A, 4, CVN_NP_EINVAL},
          Case{0x70, 7, CVN_NP_EINVAL}, Case{0xF5, 15, CVN_NP_EINVAL}, Case{0x135, 3, 0}}) {
        uint32_t cage = kSentinel;
        EXPECT_EQ(aux_cvn_np_front_port_to_ifsubinst(k.front, &cage), k.result) << k.front;
        EXPECT_EQ(cage, k.cage) << k.front;
    }
    EXPECT_EQ(aux_cvn_np_front_port_to_ifsubinst(0x00, nullptr), CVN_NP_EINVAL);
}

} // namespace
