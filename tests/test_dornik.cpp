// dornik: 100GE-only cages, two per NP, one subslot; cage c is front port
// 16c on NP c/2.  The full card has twelve cages on six NPs, the lite card
// four on two; the size comes from cardtype when the library is initialised.
#include <cstring>

#include "test_support.h"

namespace {

using namespace cvn_test;

constexpr uint32_t kT = CVN_NP_IFSUB_TYPE_DORNIK_100GE;
constexpr uint32_t k100 = CVN_NP_PORT_TYPE_100GE;
constexpr uint32_t kFullCages = 12;
constexpr uint32_t kFullNps = 6;
constexpr uint32_t kLiteCages = 4;
constexpr uint32_t kLiteNps = 2;

// NPs 0 and 1 carry port 116 on their even cage, NPs 2 to 5 port 117.
constexpr uint32_t kNpPort[kFullCages] = {116, 117, 116, 117, 117, 116,
                                          117, 116, 117, 116, 117, 116};

std::string Report(const char *condition) { return ReportLine("cvn_np_lib_dornik.cpp", condition); }

class DornikTest : public LibTest {
  protected:
    DornikTest() : LibTest(0x3D02C3) {}
};
class DornikLiteTest : public LibTest {
  protected:
    DornikLiteTest() : LibTest(0x3D02C2) {}
};
class DornikSizeTest : public LibTest {
  protected:
    DornikSizeTest() : LibTest(0) {}
};

// Slots 8-12 and 14-22 over every cage, all cages reporting the module.
void ExpectEveryCageFollowsTheWiring(uint32_t cages)
{
    for (uint32_t c = 0; c < cages; ++c)
        ASSERT_EQ(cvn_np_sim_set_ifsubsys(0, c, kT), 0);
    for (uint32_t c = 0; c < cages; ++c) {
        const uint32_t f = Front(c, 0), n = c / 2, npp = kNpPort[c];
        SCOPED_TRACE(testing::Message() << "cage " << c);
        EXPECT_EQ(cvn_np_front_port_to_np(f | 0x300), n);
        EXPECT_EQ(cvn_np_front_port_to_np_port(f), npp);
        EXPECT_EQ(cvn_np_front_port_to_port_type(f), k100);
        Quad out = Untouched();
        EXPECT_EQ(cvn_np_front_port_to_face_plate_port(f, &out[2], &out[3]), 0u);
        EXPECT_EQ(out, (Quad{kSentinel, kSentinel, f, k100}));
        EXPECT_EQ(cvn_np_front_port_mapping_info(f, &out[0], &out[1], &out[2], &out[3]), 0u);
        EXPECT_EQ(out, (Quad{n, npp, f, k100}));

        out = Untouched();
        EXPECT_EQ(cvn_np_info_to_fplate_porttype(n, npp, &out[0], &out[1]), 0u);
        EXPECT_EQ(cvn_np_info_to_front_port(n, npp, &out[2]), 0u);
        EXPECT_EQ(out, (Quad{f, k100, f, kSentinel}));
        out = Untouched();
        aux_cvn_np_info_to_mapping_info(n, npp, kT, &out[0], &out[1], &out[2]);
        EXPECT_EQ(out, (Quad{f, f, k100, kSentinel}));

        EXPECT_EQ(cvn_faceplate_porttype_to_np(k100, f | 0x100), n);
        EXPECT_EQ(cvn_faceplate_porttype_to_np_port(k100, f), npp);
        EXPECT_EQ(cvn_faceplate_porttype_to_phys_port(k100, f), f);
        out = Untouched();
        EXPECT_EQ(cvn_faceplate_porttype_mapping_info(k100, f, &out[0], &out[1], &out[2]), 0u);
        EXPECT_EQ(out, (Quad{n, npp, f, kSentinel}));
    }
}

TEST_F(DornikSizeTest, InitFillsEverySlotAndTakesTheSizeFromCardtypeNotItsArgument)
{
    struct Case {
        uint32_t written, init;
        bool full;
    };
    for (const Case &k : {Case{0x3D02C3, 0x3D02C3, true}, Case{0x3D02C6, 0x3D02C6, true},
                          Case{0x3D02C2, 0x3D02C2, false}, Case{0x3D02C2, 0x3D02C3, false},
                          Case{0x3D02C6, 0x3D02C2, true}, Case{0x3D0274, 0x3D02C6, false}}) {
        SCOPED_TRACE(testing::Message()
                     << std::hex << "cardtype " << k.written << " init " << k.init);
        cardtype = k.written;
        ASSERT_EQ(cvn_np_lib_init(k.init), 0u);
        const uint32_t cages = k.full ? kFullCages : kLiteCages, nps = k.full ? kFullNps : kLiteNps;
        EXPECT_EQ(card_np_api, &cvn_np_api_dornik);
        EXPECT_EQ(dornik_card_np_info, k.full ? &np_info_dornik : &np_info_dornik_lite);
        EXPECT_EQ(dornik_card_port_info, k.full ? port_info_dornik : port_info_dornik_lite);
        EXPECT_EQ((Quad{cvn_np_how_many(), cvn_np_chip_how_many(), cvn_max_mtu(), 0}),
                  (Quad{nps, nps, 9216, 0}));
        const card_version *v = cvn_np_version_get();
        ASSERT_EQ(v, &dornik_card_version);
        EXPECT_EQ((Quad{v->ver_major, v->ver_minor, 0, 0}), (Quad{5, 'c', 0, 0}));
        const subslot_info *s = cvn_np_subslot_info_get();
        ASSERT_EQ(s, &dornik_card_subslot_info);
        EXPECT_EQ((Quad{s->num_of_subslots, s->max_ports_per_subslot,
                        s->max_of_ifsubsys_per_subslot, s->spare}),
                  (Quad{1, 1, cages, 255}));
        EXPECT_EQ(ListOf(cvn_np_port_info_subslot(0)), (List{{cages, CVN_NP_PORT_TYPE_COMBO}}));
        cardtype = k.full ? 0x3D02C2 : 0x3D02C3; // no effect until the next init
        EXPECT_EQ(cvn_np_how_many(), nps);
    }
    // the init fills every slot of the operation table
    std::array<void (*)(), CVN_NP_API_SLOTS> slots{};
    static_assert(sizeof(slots) == sizeof(cvn_np_api));
    std::memcpy(slots.data(), &cvn_np_api_dornik, sizeof(slots));
    for (size_t i = 0; i < slots.size(); ++i)
        EXPECT_NE(slots[i], nullptr) << "slot " << i;
}

TEST_F(DornikSizeTest, LazyInitTakesTheSizeFromThePlatformCardType)
{
    for (auto [type, nps] : {std::pair{0x3D02C6u, kFullNps}, {0x3D02C2u, kLiteNps}}) {
        cvn_np_sim_set_card_type(type);
        cardtype = 0;
        initialized = 0;
        EXPECT_EQ(cvn_np_how_many(), nps);
        EXPECT_EQ(cardtype, type);
        EXPECT_EQ(card_np_api, &cvn_np_api_dornik);
    }
}

TEST_F(DornikSizeTest, OnlyTheComboAndHundredGigPositionsHoldListsOfTheirOwn)
{
    for (auto [array, cages] :
         {std::pair{port_info_dornik, kFullCages}, {port_info_dornik_lite, kLiteCages}}) {
        for (int i : {0, 1, 3})
            EXPECT_EQ(array[i], dornik_dummy_port_info) << i;
        EXPECT_EQ(ListOf(array[2]), (List{{cages, CVN_NP_PORT_TYPE_COMBO}}));
        EXPECT_EQ(ListOf(array[4]), (List{{1, k100}}));
        EXPECT_EQ(array[5], nullptr);
    }
    EXPECT_EQ(ListOf(dornik_dummy_port_info), List{});
}

TEST_F(DornikTest, ExportedTablesHoldOneEntryPerCage)
{
    for (uint32_t c = 0; c < kFullCages; ++c) {
        const port_mapping_entry &e = cvn_np_port_mapping_dornik_100g[c];
        EXPECT_EQ((std::array<uint32_t, 5>{e.phys_front_port, e.np, e.np_port, e.fplate_port,
                                           e.port_type}),
                  (std::array<uint32_t, 5>{16 * c, c / 2, kNpPort[c], 16 * c, k100}))
            << "cage " << c;
        EXPECT_EQ(np_local_port_map_dornik_100g[c], &e);
        EXPECT_EQ(fplate_port_map_dornik_100g[c], &e);
        EXPECT_EQ(phys_front_port_map_dornik_100g[c], &e);
        for (uint32_t p = 0; p < 16; ++p) {
            EXPECT_EQ(dornik_phys_2_fplate_ifsub_100GE[Front(c, p)], p == 0 ? int32_t(c) : 255);
        }
    }
    const port_mapping_entry &end = cvn_np_port_mapping_dornik_100g[kFullCages];
    EXPECT_EQ((std::array<uint32_t, 5>{end.phys_front_port, end.np, end.np_port, end.fplate_port,
                                       end.port_type}),
              (std::array<uint32_t, 5>{0xFF, 0xFF, 0xFF, 0xFF, 0xFF}));
}

TEST_F(DornikTest, CardPortInfoIsTheHundredGigListWithoutAskingAnyCage)
{
    for (uint32_t type : {kNone, kT, k100G, kFails}) {
        cvn_np_sim_reset();
        PlugAll(kFullCages, type);
        EXPECT_EQ(cvn_np_port_info_get(), port_info_dornik[4]);
        EXPECT_EQ(ListOf(cvn_np_port_info_get()), (List{{1, k100}}));
        EXPECT_EQ(cvn_np_sim_ifsubsys_queries(), 0u);
    }
    EXPECT_DEATH(cvn_np_port_info_subslot(1), Report("subslot < dornik_card_np_info->num_subslot"));
}

TEST_F(DornikTest, CagePortInfoKnowsOnlyTheDornikModule)
{
    for (uint32_t c = 0; c < kFullCages; ++c) {
        for (uint32_t type : {kT, k100G, k40G, k10G, k40GAlt, kNone, kFails}) {
            SCOPED_TRACE(testing::Message() << "cage " << c << " type " << std::hex << type);
            Plug(c, type);
            const List expected = type == kT ? List{{1, k100}} : List{};
            EXPECT_EQ(ListOf(cvn_np_port_info_from_subslot_ifsubinst(0, c)), expected);
            if (type != kFails) {
                EXPECT_EQ(ListOf(aux_cvn_np_port_info_get(0, c, type)), expected);
            }
        }
    }
    EXPECT_EQ(aux_cvn_np_port_info_get(0, 0, k100G), dornik_dummy_port_info);
    EXPECT_DEATH(cvn_np_port_info_from_subslot_ifsubinst(1, 12),
                 Report("subslot < dornik_card_np_info->num_subslot"));
    EXPECT_DEATH(cvn_np_port_info_from_subslot_ifsubinst(0, 12),
                 Report("ifsub < dornik_card_np_info->num_cage"));
    EXPECT_DEATH(aux_cvn_np_port_info_get(1, 12, kT),
                 Report("subslot_num < dornik_card_np_info->num_subslot"));
    EXPECT_DEATH(aux_cvn_np_port_info_get(0, 12, kT),
                 Report("ifsubsys_num < dornik_card_np_info->num_cage"));
}

TEST_F(DornikTest, EveryCageMapsToItsNpAndNpPort) { ExpectEveryCageFollowsTheWiring(kFullCages); }

TEST_F(DornikTest, FailedQueryAnswersZeroWithoutLookingThePortUp)
{
    Plug(3, kFails);
    for (uint32_t f : {0x30u, 0x31u, 0x3Fu}) { // ports 1 and 15 have no index either
        EXPECT_EQ((Quad{cvn_np_front_port_to_np(f), cvn_np_front_port_to_np_port(f),
                        cvn_np_front_port_to_port_type(f), 0}),
                  (Quad{0, 0, 0, 0}))
            << f;
        Quad out = Untouched();
        EXPECT_EQ(cvn_np_front_port_to_face_plate_port(f, &out[0], &out[1]), kFailStatus);
        EXPECT_EQ(cvn_np_front_port_mapping_info(f, &out[0], &out[1], &out[2], &out[3]),
                  kFailStatus);
        EXPECT_EQ(out, Untouched());
    }
}

TEST_F(DornikTest, AnsweredCageWithoutTheModuleFailsTheTypeBeforeThePort)
{
    Plug(0, kT);
    Plug(2, k100G);
    Quad out = Untouched();
    for (uint32_t f : {0x10u, 0x11u, 0x20u, 0x2Au}) { // cage 1 empty, cage 2 another type
        SCOPED_TRACE(testing::Message() << "front 0x" << std::hex << f);
        EXPECT_DEATH(cvn_np_front_port_to_np(f), Report("0"));
        EXPECT_DEATH(cvn_np_front_port_to_np_port(f), Report("0"));
        EXPECT_DEATH(cvn_np_front_port_to_port_type(f), Report("0"));
        EXPECT_DEATH(cvn_np_front_port_to_face_plate_port(f, &out[0], &out[1]), Report("0"));
        EXPECT_DEATH(cvn_np_front_port_mapping_info(f, nullptr, nullptr, nullptr, nullptr),
                     Report("0"));
    }
    EXPECT_DEATH(cvn_np_front_port_to_np(0x01),
                 Report("index < dornik_card_np_info->port_subslot_100g"));
    EXPECT_DEATH(cvn_np_front_port_to_np(0xC0),
                 Report("ifsubsys_id.ifsubsys < dornik_card_np_info->num_cage"));
    EXPECT_EQ(cvn_np_front_port_to_face_plate_port(0x00, nullptr, &out[1]), kInvalid);
    EXPECT_EQ(cvn_np_front_port_to_face_plate_port(0x00, &out[0], nullptr), kInvalid);
    EXPECT_EQ(out, Untouched());
}

TEST_F(DornikTest, LocalPortCountIsOnePerCageReportingTheModule)
{
    const std::vector<std::pair<uint32_t, uint32_t>> cages = {
        {kT, kT},     {kT, kNone},  {kNone, kT},      {kNone, kNone},
        {kFails, kT}, {kT, kFails}, {kFails, kFails},
    };
    for (uint32_t n = 0; n < kFullNps; ++n) {
        for (const auto &[even, odd] : cages) {
            PlugNp(kFullCages, kT, n, even, odd); // the other NPs' cages must not count
            SCOPED_TRACE(testing::Message() << "np " << n << std::hex << " " << even << " " << odd);
            EXPECT_EQ(cvn_np_info_num_local_ports(n), uint32_t(even == kT) + uint32_t(odd == kT));
        }
        EXPECT_EQ(aux_cvn_np_info_num_local_ports(0, n, kT), 2u);
    }
    PlugNp(kFullCages, kNone, 4, kNone, k100G);
    EXPECT_DEATH(cvn_np_info_num_local_ports(4), Report("0"));
    EXPECT_DEATH(cvn_np_info_num_local_ports(kFullNps), Report("np_id < cvn_np_how_many()"));
    EXPECT_DEATH(aux_cvn_np_info_num_local_ports(1, kFullNps, k100G),
                 Report("subslot_num < dornik_card_np_info->num_subslot"));
    EXPECT_DEATH(aux_cvn_np_info_num_local_ports(0, kFullNps, k100G),
                 Report("np_num < dornik_card_np_info->num_complex"));
}

TEST_F(DornikTest, NpLocalPortWithoutAnEntryLeavesOutputsAlone)
{
    for (uint32_t n = 0; n < kFullNps; ++n) {
        for (uint32_t npp : {0u, 100u, 115u, 118u, 204u, 0x10074u, 0x10075u}) {
            SCOPED_TRACE(testing::Message() << "np " << n << " np_port " << npp);
            Quad out = Untouched();
            EXPECT_EQ(cvn_np_info_to_fplate_porttype(n, npp, &out[0], &out[1]), 0u);
            EXPECT_EQ(cvn_np_info_to_front_port(n, npp, &out[2]), 0u);
            EXPECT_EQ(out, Untouched());
        }
    }
    Quad out = Untouched();
    EXPECT_EQ(cvn_np_info_to_fplate_porttype(kFullNps, 116, &out[0], &out[1]), kInvalid);
    EXPECT_EQ(cvn_np_info_to_front_port(kFullNps, 116, &out[2]), kInvalid);
    EXPECT_EQ(out, Untouched());
    EXPECT_EQ(cvn_np_sim_ifsubsys_queries(), 0u);
    EXPECT_DEATH(aux_cvn_np_info_to_mapping_info(kFullNps, 117, k100G, &out[0], nullptr, nullptr),
                 Report("np_num < dornik_card_np_info->num_complex"));
    ExpectNpPortSearchStopsAtFirstMatchWithinCount(&aux_np_port_to_mapping_info);
}

TEST_F(DornikTest, FirstPortOfNpIsItsFirstEntryOnceACageReportsTheModule)
{
    struct Case {
        uint32_t even, odd, result;
    };
    const std::vector<Case> cases = {
        {kT, kNone, 0},
        {kNone, kT, 0},
        {kT, kFails, 0},
        {kNone, kNone, kInvalid},
        {k100G, kT, kInvalid},
        {kNone, k40G, kInvalid},
        {kFails, kT, kFailStatus},
        {kNone, kFails, kFailStatus},
    };
    for (uint32_t n = 0; n < kFullNps; ++n) {
        for (const Case &k : cases) {
            PlugNp(kFullCages, kT, n, k.even, k.odd);
            SCOPED_TRACE(testing::Message()
                         << "np " << n << std::hex << " " << k.even << " " << k.odd);
            ExpectFirstPortOnNp(n, k.result, k100);
        }
        Quad out = Untouched();
        EXPECT_EQ(aux_cvn_np_first_port_on_np(n, 11, kT, &out[0], &out[1], &out[2]), 0u);
        EXPECT_EQ(out, (Quad{32 * n, 32 * n, k100, kSentinel}));
    }
    Quad out = Untouched();
    EXPECT_EQ(aux_cvn_np_first_port_on_np(kFullNps, 0, kT, &out[0], &out[1], &out[2]), kInvalid);
    EXPECT_EQ(cvn_np_first_phys_port_on_np(0, &out[3]), kInvalid);
    EXPECT_EQ(out, Untouched());
    EXPECT_DEATH(cvn_np_first_front_port_on_np(kFullNps, nullptr),
                 Report("phys_front_port != NULL"));
    EXPECT_DEATH(cvn_np_first_front_port_on_np(kFullNps, &out[0]),
                 Report("np_id < cvn_np_how_many()"));
    EXPECT_DEATH(cvn_np_first_fplate_porttype_on_np(kFullNps, nullptr, nullptr),
                 Report("port_type != NULL"));
    EXPECT_DEATH(cvn_np_first_fplate_porttype_on_np(kFullNps, &out[0], nullptr),
                 Report("fplate_port != NULL"));
    EXPECT_DEATH(cvn_np_first_fplate_porttype_on_np(kFullNps, &out[0], &out[1]),
                 Report("np_id < cvn_np_how_many()"));
}

TEST_F(DornikTest, ThreeSpeedModuleTypesAreUnknown)
{
    for (uint32_t type : {k100G, k40G, k10G, k40GAlt, kNone}) {
        SCOPED_TRACE(testing::Message() << "type 0x" << std::hex << type);
        EXPECT_EQ(aux_cvn_np_port_info_get(0, 0, type), dornik_dummy_port_info);
        Quad out = Untouched();
        EXPECT_EQ(aux_cvn_np_first_port_on_np(0, 0, type, &out[0], &out[1], &out[2]), kInvalid);
        EXPECT_EQ(out, Untouched());
        EXPECT_DEATH(aux_cvn_np_front_port_to_mapping_info(0, 0x00, type, &out[0], nullptr, nullptr,
                                                           nullptr),
                     Report("0"));
        EXPECT_DEATH(aux_cvn_np_info_num_local_ports(0, 0, type), Report("0"));
        EXPECT_DEATH(aux_cvn_np_info_to_mapping_info(0, 116, type, &out[0], nullptr, nullptr),
                     Report("0"));
    }
}

TEST_F(DornikTest, FrontPortMappingChecksCageThenTypeThenIndex)
{
    Quad out = Untouched();
    aux_cvn_np_front_port_to_mapping_info(5, 0x50, kT, &out[0], &out[1], &out[2], &out[3]);
    EXPECT_EQ(out, (Quad{2, 116, 0x50, k100}));
    EXPECT_DEATH(
        aux_cvn_np_front_port_to_mapping_info(12, 0x01, kNone, &out[0], nullptr, nullptr, nullptr),
        Report("ifsubsys_num < dornik_card_np_info->num_cage"));
    EXPECT_DEATH(
        aux_cvn_np_front_port_to_mapping_info(0, 0x01, kNone, &out[0], nullptr, nullptr, nullptr),
        Report("0"));
    for (uint32_t port : {0x01u, 0x1Fu, 0xC0u}) { // 0xC0 is past the table
        EXPECT_DEATH(
            aux_cvn_np_front_port_to_mapping_info(0, port, kT, &out[0], nullptr, nullptr, nullptr),
            Report("index < dornik_card_np_info->port_subslot_100g"));
    }
}

TEST_F(DornikTest, FaceplatePortChecksCageThenTypeThenIndex)
{
    EXPECT_DEATH(cvn_faceplate_porttype_to_np(k100, 0xC0),
                 Report("ifsubsys_num < dornik_card_np_info->num_cage"));
    for (uint32_t port_type : {CVN_NP_PORT_TYPE_10GE, CVN_NP_PORT_TYPE_40GE, 0x104u}) {
        EXPECT_DEATH(cvn_faceplate_porttype_to_np(port_type, 0x31), Report("0"));
    }
    EXPECT_DEATH(cvn_faceplate_porttype_to_np_port(k100, 0x31),
                 Report("index < dornik_card_np_info->port_subslot_100g"));
    EXPECT_DEATH(aux_cvn_faceplate_to_mapping_info(0, 0xC0, k100, nullptr, nullptr, nullptr),
                 Report("index < dornik_card_np_info->port_subslot_100g"));
    EXPECT_DEATH(aux_cvn_faceplate_to_mapping_info(12, 0x00, k100, nullptr, nullptr, nullptr),
                 Report("ifsubsys_num < dornik_card_np_info->num_cage"));
}

TEST_F(DornikTest, CageQueryAsksThePlatformForSubslotZeroAndTheCage)
{
    for (uint32_t c = 0; c < kFullCages; ++c) {
        Plug(c, c % 2 == 0 ? kT : kNone);
        ASSERT_EQ(cvn_np_sim_set_ifsubsys(1, c, k10G), 0);
        Quad out = Untouched();
        EXPECT_EQ(aux_cvn_np_front_port_to_ifsubsys(Front(c, 2) | 0x100, &out[0], &out[1], &out[2]),
                  0u);
        EXPECT_EQ(out, (Quad{0, c, c % 2 == 0 ? kT : kNone, kSentinel}));
    }
    Plug(7, kFails);
    Quad out = Untouched();
    EXPECT_EQ(aux_cvn_np_front_port_to_ifsubsys(0x70, &out[0], &out[1], &out[2]), kFailStatus);
    EXPECT_EQ(out, Untouched());
    EXPECT_DEATH(aux_cvn_np_front_port_to_ifsubsys(0xC0, &out[0], &out[1], &out[2]),
                 Report("ifsubsys_id.ifsubsys < dornik_card_np_info->num_cage"));
}

TEST_F(DornikTest, ComplexesSubslotsAndEncoding)
{
    EXPECT_EQ(cvn_np_complex_to_np(kFullNps - 1, 1), kFullNps - 1);
    Quad out = Untouched();
    EXPECT_EQ(cvn_np_subslot_to_np_list(0, &out[2], &out[3]), 0u);
    EXPECT_EQ(out, (Quad{kSentinel, kSentinel, kFullNps, 0}));
    EXPECT_DEATH(cvn_np_complex_to_subslot(kFullNps), Report("np_complex < cvn_np_how_many()"));
    EXPECT_DEATH(cvn_np_complex_to_subslot_list(kFullNps, &out[0], &out[1]),
                 Report("np_complex < cvn_np_how_many()"));
    EXPECT_DEATH(cvn_np_complex_to_np(kFullNps, 0), Report("np_complex < cvn_np_how_many()"));

    EXPECT_EQ(cvn_np_lib_set_subslot_ifsubinst_ifsubinst_port(0, 11, 0), 0xB0u);
    EXPECT_EQ((Quad{cvn_np_lib_get_subslot(0x1B3), cvn_np_lib_get_port(0x1B3),
                    cvn_np_lib_get_ifsubinst(0x1B3), cvn_np_lib_get_ifsubinst_port(0x1B3)}),
              (Quad{0, 0xB3, 11, 3}));
    EXPECT_EQ(cvn_np_lib_get_phys_port_tuple45(k100, 0, 5, 3), 80u); // the port is dropped
    for (uint32_t other : {1u, 3u, 0x104u}) {
        EXPECT_EQ(cvn_np_lib_get_phys_port_tuple45(other, 0, 5, 0), 255u) << other;
    }
}

// Slot 45's cage bound is twelve on both sizes.
void ExpectCageDecodeBoundIsTwelve()
{
    struct Case {
        uint32_t front, cage, result;
    };
    for (const Case &k :
         {Case{0x00, 0, 0}, Case{0x40, 4, 0}, Case{0xB0, 11, 0}, Case{0xC0, 12, CVN_NP_EINVAL},
          Case{0xFF, 15, CVN_NP_EINVAL}, Case{0x1B5, 11, 0}}) {
        uint32_t cage = kSentinel;
        EXPECT_EQ(aux_cvn_np_front_port_to_ifsubinst(k.front, &cage), k.result) << k.front;
        EXPECT_EQ(cage, k.cage) << k.front;
    }
    EXPECT_EQ(aux_cvn_np_front_port_to_ifsubinst(0x00, nullptr), CVN_NP_EINVAL);
}

TEST_F(DornikTest, FrontPortCageDecodeBoundIsTwelve) { ExpectCageDecodeBoundIsTwelve(); }
TEST_F(DornikLiteTest, FrontPortCageDecodeBoundIsTwelveToo) { ExpectCageDecodeBoundIsTwelve(); }

TEST_F(DornikLiteTest, FourCagesMapToTheirNpsAndNpPorts)
{
    EXPECT_EQ(cvn_np_port_info_get(), port_info_dornik_lite[4]);
    ExpectEveryCageFollowsTheWiring(kLiteCages);
    for (uint32_t n = 0; n < kLiteNps; ++n) {
        PlugNp(kLiteCages, kT, n, kT, kNone);
        EXPECT_EQ(cvn_np_info_num_local_ports(n), 1u);
        ExpectFirstPortOnNp(n, 0, k100);
    }
}

TEST_F(DornikLiteTest, CageFourAndNpTwoAreBeyondTheCard)
{
    PlugAll(kFullCages, kT);
    uint32_t out = kSentinel;
    EXPECT_DEATH(cvn_np_port_info_from_subslot_ifsubinst(0, 4),
                 Report("ifsub < dornik_card_np_info->num_cage"));
    EXPECT_DEATH(cvn_np_front_port_to_np(0x40),
                 Report("ifsubsys_id.ifsubsys < dornik_card_np_info->num_cage"));
    EXPECT_DEATH(aux_cvn_np_port_info_get(0, 4, kT),
                 Report("ifsubsys_num < dornik_card_np_info->num_cage"));
    EXPECT_DEATH(
        aux_cvn_np_front_port_to_mapping_info(4, 0x40, kT, &out, nullptr, nullptr, nullptr),
        Report("ifsubsys_num < dornik_card_np_info->num_cage"));
    EXPECT_DEATH(
        aux_cvn_np_front_port_to_mapping_info(0, 0x40, kT, &out, nullptr, nullptr, nullptr),
        Report("index < dornik_card_np_info->port_subslot_100g"));
    EXPECT_DEATH(cvn_faceplate_porttype_to_np(k100, 0x40),
                 Report("ifsubsys_num < dornik_card_np_info->num_cage"));
    EXPECT_DEATH(aux_cvn_faceplate_to_mapping_info(0, 0x40, k100, &out, nullptr, nullptr),
                 Report("index < dornik_card_np_info->port_subslot_100g"));

    EXPECT_EQ(cvn_np_info_to_front_port(kLiteNps, 117, &out), kInvalid);
    EXPECT_EQ(aux_cvn_np_first_port_on_np(kLiteNps, 0, kT, &out, nullptr, nullptr), kInvalid);
    EXPECT_EQ(out, kSentinel);
    EXPECT_DEATH(cvn_np_info_num_local_ports(kLiteNps), Report("np_id < cvn_np_how_many()"));
    EXPECT_DEATH(cvn_np_first_front_port_on_np(kLiteNps, &out),
                 Report("np_id < cvn_np_how_many()"));
    EXPECT_DEATH(aux_cvn_np_info_num_local_ports(0, kLiteNps, kT),
                 Report("np_num < dornik_card_np_info->num_complex"));
    EXPECT_DEATH(aux_cvn_np_info_to_mapping_info(kLiteNps, 117, kT, &out, nullptr, nullptr),
                 Report("np_num < dornik_card_np_info->num_complex"));
    EXPECT_DEATH(cvn_np_complex_to_np(kLiteNps, 0), Report("np_complex < cvn_np_how_many()"));
}

} // namespace
