// quellon: 24 ports per NP in groups of four per instance, one or two NPs by
// card type; a front port is the port's index, and each NP's ports 192..215
// come in swapped pairs.
#include <cstring>

#include "test_support.h"

namespace {

using namespace cvn_test;

constexpr uint32_t kQln10 = CVN_NP_IFSUB_TYPE_QUELLON_10GE;

std::string Report(const char *condition)
{
    return ReportLine("cvn_np_lib_quellon.cpp", condition);
}

uint32_t NpCount(uint32_t card_type)
{
    for (uint32_t one : {0x3D02CAu, 0x3D02CBu, 0x3D02CCu, 0x3D02D0u, 0x3D02D1u, 0x3D02D2u})
        if (card_type == one)
            return 1;
    return 2;
}
uint32_t NpOf(uint32_t i) { return i / 24; }
uint32_t NpPortOf(uint32_t i) { return 192 + 4 * ((i / 4) % 6) + ((i % 4) ^ 1); }

const Quad kNone4 = Untouched();

// Runs over every quellon card type, the type written to cardtype first.
class QuellonTest : public LibTest, public testing::WithParamInterface<uint32_t> {
  protected:
    QuellonTest() : LibTest(GetParam()) {}
    uint32_t Ports() const { return 24 * NpCount(GetParam()); }
    // Every instance reports quellon's 10GE type.
    static void PlugAllInstances() { PlugAll(12, kQln10); }
};

INSTANTIATE_TEST_SUITE_P(EveryCardType, QuellonTest, testing::Range(0x3D02C7u, 0x3D02D3u),
                         [](const auto &info) {
                             return "x" + std::to_string(info.param - 0x3D0200);
                         });

TEST_P(QuellonTest, CardSummaryFollowsTheNpCount)
{
    const uint32_t n = NpCount(GetParam());
    EXPECT_EQ(card_np_api, &cvn_np_api_quellon);
    EXPECT_EQ(cvn_np_how_many(), n);
    EXPECT_EQ(cvn_np_chip_how_many(), n);
    EXPECT_EQ(cvn_np_qln_max_ports, Ports());
    EXPECT_EQ((cvn_np_version_get()->ver_major << 8) | cvn_np_version_get()->ver_minor,
              (5u << 8) | 'c');
    EXPECT_EQ(cvn_max_mtu(), 9216u);
    const subslot_info *s = cvn_np_subslot_info_get();
    EXPECT_EQ((Quad{s->num_of_subslots, s->max_ports_per_subslot, s->max_of_ifsubsys_per_subslot,
                    s->spare}),
              (Quad{1, Ports(), 6 * n, Ports()}));
    const List card = {{Ports(), CVN_NP_PORT_TYPE_COMBO}, {4, CVN_NP_PORT_TYPE_COMBO}};
    EXPECT_EQ(ListOf(cvn_np_port_info_get()), card);
    EXPECT_EQ(ListOf(cvn_np_port_info_subslot(7)), card);
    EXPECT_EQ(ListOf(cvn_np_port_info_from_subslot_ifsubinst(3, 40)),
              (List{{4, CVN_NP_PORT_TYPE_COMBO}}));
    EXPECT_EQ(cvn_np_info_num_local_ports(n - 1), 24u);
    EXPECT_DEATH(cvn_np_info_num_local_ports(n), Report("np_id < cvn_np_how_many()"));
}

TEST_P(QuellonTest, FrontPortIsTheIndexOfItsPort)
{
    PlugAllInstances();
    for (uint32_t f = 0; f < 0x300; ++f) {
        const uint32_t i = f & 0xFF;
        SCOPED_TRACE(testing::Message() << "front 0x" << std::hex << f);
        Quad out = kNone4;
        if (i >= Ports()) {
            EXPECT_EQ(cvn_np_front_port_to_face_plate_port(f, &out[2], &out[3]), kInvalid);
            EXPECT_EQ(cvn_np_front_port_mapping_info(f, &out[0], &out[1], &out[2], &out[3]),
                      kInvalid);
            EXPECT_EQ(out, kNone4);
            continue;
        }
        EXPECT_EQ(cvn_np_front_port_to_np(f), NpOf(i));
        EXPECT_EQ(cvn_np_front_port_to_np_port(f), NpPortOf(i));
        EXPECT_EQ(cvn_np_front_port_to_port_type(f), 1u);
        EXPECT_EQ(cvn_np_front_port_to_face_plate_port(f, &out[2], &out[3]), 0u);
        EXPECT_EQ(out, (Quad{kSentinel, kSentinel, i, 1}));
        out = kNone4;
        EXPECT_EQ(cvn_np_front_port_mapping_info(f, &out[0], &out[1], &out[2], nullptr), 0u);
        EXPECT_EQ(out, (Quad{NpOf(i), NpPortOf(i), i, kSentinel}));
        EXPECT_EQ(cvn_np_lib_get_subslot(f), 0u);
        EXPECT_EQ(cvn_np_lib_get_port(f), i);
        EXPECT_EQ(cvn_np_lib_get_subslot_port(f), i);
        EXPECT_EQ(cvn_np_lib_get_ifsubinst(f), i / 4);
        EXPECT_EQ(cvn_np_lib_get_ifsubinst_port(f), i % 4);
        EXPECT_EQ(cvn_np_lib_set_subslot_phy_port(3, i), i);
        EXPECT_EQ(cvn_np_lib_set_subslot_ifsubinst_ifsubinst_port(9, i / 4, (i % 4) + 4 * (f >> 8)),
                  i);
        EXPECT_EQ(cvn_np_lib_get_phys_port_tuple45(4, 1, static_cast<uint16_t>(i), 3), i);
    }
    EXPECT_EQ(cvn_np_lib_get_subslot_port(0x1FF), 0xFFu); // no check
    const uint32_t past = Ports();
    const std::string front_bound = Report("phys_front_port < cvn_np_qln_max_ports");
    const std::string sub_bound = Report("sub_phys_front_port < cvn_np_qln_max_ports");
    EXPECT_DEATH(cvn_np_front_port_to_np(past), front_bound);
    EXPECT_DEATH(cvn_np_front_port_to_np_port(past | 0x100), front_bound);
    EXPECT_DEATH(cvn_np_front_port_to_port_type(past), front_bound);
    EXPECT_DEATH(cvn_np_lib_set_subslot_phy_port(0, past), front_bound);
    EXPECT_DEATH(cvn_np_lib_set_subslot_phy_port(0, 0x100), front_bound); // not narrowed
    EXPECT_DEATH(cvn_np_lib_set_subslot_ifsubinst_ifsubinst_port(0, past / 4, 0), Report("0"));
    EXPECT_DEATH(cvn_np_lib_get_subslot(past), sub_bound);
    EXPECT_DEATH(cvn_np_lib_get_port(past), sub_bound);
    EXPECT_DEATH(cvn_np_lib_get_ifsubinst(past), sub_bound);
    EXPECT_DEATH(cvn_np_lib_get_ifsubinst_port(past), sub_bound);
    EXPECT_DEATH(cvn_np_lib_get_phys_port_tuple45(1, 0, static_cast<uint16_t>(past), 0), sub_bound);
}

TEST_P(QuellonTest, PortTypeIsAskedOfThePortsInstance)
{
    // Only quellon's own 10GE type makes a 10GE port; a failed query counts
    // as no port and is not passed back.
    const std::vector<std::pair<uint32_t, uint32_t>> answers = {
        {kQln10, 1}, {k10G, 0}, {kNone, 0}, {0x10041, 0}};
    for (uint32_t inst = 0; inst < Ports() / 4; ++inst) {
        for (const auto &[type, port_type] : answers) {
            Plug(inst, type);
            for (uint32_t i = 4 * inst; i < 4 * inst + 4; ++i) {
                SCOPED_TRACE(testing::Message() << "port " << i << " type 0x" << std::hex << type);
                EXPECT_EQ(cvn_np_front_port_to_port_type(i), port_type);
                Quad out = kNone4;
                EXPECT_EQ(cvn_np_front_port_mapping_info(i, nullptr, nullptr, nullptr, &out[3]),
                          0u);
                EXPECT_EQ(out[3], port_type);
            }
        }
        Plug(inst, kFails);
        Quad out = kNone4;
        EXPECT_EQ(cvn_np_front_port_to_face_plate_port(4 * inst, &out[0], &out[1]), 0u);
        EXPECT_EQ(out, (Quad{4 * inst, 0, kSentinel, kSentinel}));
    }
}

TEST_P(QuellonTest, NpLocalPortFindsItsFrontPort)
{
    PlugAllInstances();
    const uint32_t n = NpCount(GetParam());
    for (uint32_t np = 0; np < n; ++np) {
        for (uint32_t np_port = 190; np_port < 218; ++np_port) {
            SCOPED_TRACE(testing::Message() << "NP " << np << " port " << np_port);
            uint32_t want = kSentinel;
            for (uint32_t i = 24 * np; i < 24 * np + 24; ++i)
                if (NpPortOf(i) == np_port)
                    want = i;
            Quad out = kNone4;
            EXPECT_EQ(cvn_np_info_to_front_port(np, np_port, &out[0]), 0u);
            EXPECT_EQ(cvn_np_info_to_fplate_porttype(np, np_port, &out[1], &out[2]), 0u);
            const uint32_t type = want == kSentinel ? kSentinel : 1;
            EXPECT_EQ(out, (Quad{want, want, type, kSentinel}));
        }
        Quad out = kNone4;
        EXPECT_EQ(cvn_np_first_front_port_on_np(np, &out[0]), 0u);
        EXPECT_EQ(cvn_np_first_phys_port_on_np(np, &out[1]), 0u);
        EXPECT_EQ(cvn_np_first_fplate_porttype_on_np(np, &out[3], &out[2]), 0u);
        EXPECT_EQ(out, (Quad{24 * np + 1, 24 * np + 1, 24 * np + 1, 1}));
        out = kNone4; // the type is looked up only when both outputs are given
        EXPECT_EQ(cvn_np_first_fplate_porttype_on_np(np, &out[3], nullptr), 0u);
        EXPECT_EQ(out, kNone4);
    }
    Quad out = kNone4;
    EXPECT_EQ(cvn_np_info_to_front_port(n, 193, &out[0]), kInvalid);
    EXPECT_EQ(cvn_np_info_to_fplate_porttype(n, 193, &out[0], &out[1]), kInvalid);
    EXPECT_EQ(cvn_np_first_front_port_on_np(n, &out[0]), kInvalid);
    EXPECT_EQ(cvn_np_first_phys_port_on_np(n, &out[0]), kInvalid);
    EXPECT_EQ(cvn_np_first_fplate_porttype_on_np(n, &out[0], &out[1]), kInvalid);
    EXPECT_EQ(cvn_np_info_to_front_port(0, 0x100C0, &out[0]), 0u); // NP port compared in 32 bits
    EXPECT_EQ(out, kNone4);
}

TEST_P(QuellonTest, FaceplatePortIsTheFrontPort)
{
    PlugAllInstances();
    for (uint32_t i = 0; i < Ports(); ++i) {
        const uint32_t fp = i | 0x500;
        EXPECT_EQ(cvn_faceplate_porttype_to_np(7, fp), NpOf(i));
        EXPECT_EQ(cvn_faceplate_porttype_to_np_port(0, fp), NpPortOf(i));
        EXPECT_EQ(cvn_faceplate_porttype_to_phys_port(1, fp), i);
        Quad out = kNone4;
        EXPECT_EQ(cvn_faceplate_porttype_mapping_info(1, fp, &out[0], &out[1], &out[2]), 0u);
        EXPECT_EQ(out, (Quad{NpOf(i), NpPortOf(i), i, kSentinel}));
    }
    const std::string bound = Report("fplate_port < cvn_np_qln_max_ports");
    EXPECT_DEATH(cvn_faceplate_porttype_to_np(1, Ports()), bound);
    EXPECT_DEATH(cvn_faceplate_porttype_to_np_port(1, Ports()), bound);
    EXPECT_DEATH(cvn_faceplate_porttype_to_phys_port(1, 0xFF), bound);
    EXPECT_DEATH(cvn_faceplate_porttype_mapping_info(1, Ports(), nullptr, nullptr, nullptr), bound);
}

TEST_P(QuellonTest, ComplexesAndCpuPort)
{
    const uint32_t n = NpCount(GetParam());
    Quad out = kNone4;
    EXPECT_EQ(cvn_np_complex_to_subslot(9), 0u); // not checked
    EXPECT_EQ(cvn_np_complex_to_subslot_list(0, nullptr, &out[1]), 0u);
    EXPECT_EQ(cvn_np_complex_to_subslot_list(static_cast<uint8_t>(n - 1), &out[0], &out[1]), 0u);
    EXPECT_EQ(out, (Quad{1, 0, kSentinel, kSentinel}));
    EXPECT_EQ(cvn_np_complex_to_np(static_cast<uint8_t>(n - 1), 1), n - 1);
    EXPECT_EQ(cvn_np_subslot_to_np_list(0, &out[2], &out[3]), 0u);
    EXPECT_EQ(out, (Quad{1, 0, n, 0}));
    EXPECT_EQ(cvn_np_subslot_to_np_list(0, nullptr, &out[3]), kInvalid);
    EXPECT_EQ(cvn_np_set_if_subsys_type(1, 2), 0u);
    EXPECT_EQ(cvn_np_to_cpu_port_map(static_cast<uint16_t>(n - 1)), 3u);
    EXPECT_DEATH(cvn_np_complex_to_subslot_list(static_cast<uint8_t>(n), nullptr, nullptr),
                 Report("np_complex < cvn_np_how_many()"));
    EXPECT_DEATH(cvn_np_complex_to_np(static_cast<uint8_t>(n), 0),
                 Report("np_complex < cvn_np_how_many()"));
    EXPECT_DEATH(cvn_np_to_cpu_port_map(static_cast<uint16_t>(n)),
                 Report("np_num < cvn_np_how_many()"));
}

TEST_P(QuellonTest, AuxiliarySlotsAreEmpty)
{
    Quad out = kNone4;
    EXPECT_EQ(aux_cvn_np_front_port_to_ifsubsys(0, &out[0], &out[1], &out[2]), kInvalid);
    EXPECT_EQ(aux_cvn_np_port_info_get(0, 0, kQln10), nullptr);
    aux_cvn_np_front_port_to_mapping_info(0, 0, kQln10, &out[0], &out[1], &out[2], &out[3]);
    EXPECT_EQ(aux_cvn_np_info_num_local_ports(0, 0, kQln10), kInvalid);
    aux_cvn_np_info_to_mapping_info(0, 193, kQln10, &out[0], &out[1], &out[2]);
    EXPECT_EQ(aux_cvn_np_first_port_on_np(0, 0, kQln10, &out[0], &out[1], &out[2]), kInvalid);
    EXPECT_EQ(aux_cvn_faceplate_to_mapping_info(0, 0, 1, &out[0], &out[1], &out[2]), kInvalid);
    EXPECT_EQ(aux_cvn_np_front_port_to_ifsubinst(0, &out[0]), kInvalid);
    EXPECT_EQ(out, kNone4);
    EXPECT_EQ(cvn_np_sim_ifsubsys_queries(), 0u);
}

class QuellonCardTypeTest : public LibTest {
  protected:
    QuellonCardTypeTest() : LibTest(0x3D02C7) {}
};

TEST_F(QuellonCardTypeTest, NpCountFollowsCardtypeOnEveryCall)
{
    EXPECT_EQ(cvn_np_how_many(), 2u);
    cardtype = 0x3D02CA;
    EXPECT_EQ(cvn_np_how_many(), 1u);
    EXPECT_EQ(cvn_np_qln_max_ports, 48u); // the bound is the init's
    EXPECT_EQ(cvn_np_front_port_to_np(47), 1u);
    EXPECT_EQ(cvn_np_info_to_front_port(1, 192, nullptr), kInvalid);
}

TEST_F(QuellonCardTypeTest, FillerLeavesOnlyTheAuxiliarySlotsEmpty)
{
    std::array<void (*)(), CVN_NP_API_SLOTS> slots{};
    static_assert(sizeof(slots) == sizeof(cvn_np_api));
    std::memcpy(slots.data(), &cvn_np_api_quellon, sizeof(slots));
    for (size_t i = 0; i < slots.size(); ++i)
        EXPECT_EQ(slots[i] == nullptr, i >= 37) << "slot " << i;
}

// The first public call of a fresh process stores the platform's card type
// in cardtype before the init reads it, so the NP count and every record
// the init fills follow the platform's card.
TEST_F(QuellonCardTypeTest, LazyInitTakesTheNpCountFromThePlatformCardType)
{
    for (auto [type, n] : {std::pair{0x3D02CBu, 1u}, {0x3D02CEu, 2u}, {0x3D02D1u, 1u}}) {
        SCOPED_TRACE(testing::Message() << std::hex << type);
        cvn_np_sim_set_card_type(type);
        cardtype = 0;
        initialized = 0;
        card_np_api = nullptr;
        EXPECT_EQ(cvn_np_chip_how_many(), n);
        EXPECT_EQ(cardtype, type);
        EXPECT_EQ(card_np_api, &cvn_np_api_quellon);
        EXPECT_EQ(cvn_np_qln_max_ports, 24 * n);
        const subslot_info *s = cvn_np_subslot_info_get();
        EXPECT_EQ((Quad{s->num_of_subslots, s->max_ports_per_subslot,
                        s->max_of_ifsubsys_per_subslot, s->spare}),
                  (Quad{1, 24 * n, 6 * n, 24 * n}));
        EXPECT_EQ(ListOf(cvn_np_port_info_get()),
                  (List{{24 * n, CVN_NP_PORT_TYPE_COMBO}, {4, CVN_NP_PORT_TYPE_COMBO}}));
    }
}

// The first port of NP 1 is port 25 (NP-local port 192, instance 6); its
// type is what instance 6 reports, 10GE only for quellon's own type.
TEST_F(QuellonCardTypeTest, FirstPortTypeIsAskedOfItsInstance)
{
    for (auto [reported, want] : {std::pair{k10G, 0u}, {kQln10, 1u}, {kNone, 0u}}) {
        SCOPED_TRACE(testing::Message() << std::hex << reported);
        Plug(6, reported);
        Quad out = kNone4;
        EXPECT_EQ(cvn_np_first_fplate_porttype_on_np(1, &out[1], &out[0]), 0u);
        EXPECT_EQ(cvn_np_info_to_fplate_porttype(1, 192, &out[2], &out[3]), 0u);
        EXPECT_EQ(out, (Quad{25, want, 25, want}));
    }
}

} // namespace
