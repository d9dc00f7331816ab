// maruta: two NPs, each with one 100GE port (instances 0 and 2) and ten
// 10GE ports (instances 1 and 3); front port = 16 * instance + port.
#include <cstring>

#include "test_support.h"

namespace {

using namespace cvn_test;

constexpr uint32_t k100 = CVN_NP_IFSUB_TYPE_MARUTA_100GE;
constexpr uint32_t k10 = CVN_NP_IFSUB_TYPE_MARUTA_10GE;

std::string Report(const char *condition) { return ReportLine("cvn_np_lib_maruta.cpp", condition); }

// One port as the wiring gives it: front, NP, NP-local port, port type.
struct Port {
    uint32_t front, np, np_port, type;
};
// In the tuple order: NP 0's 10GE ports, NP 1's, then the two 100GE ports.
const std::vector<Port> &Ports()
{
    static const std::vector<Port> ports = [] {
        std::vector<Port> p;
        for (uint32_t np = 0; np < 2; ++np)
            for (uint32_t k = 0; k < 10; ++k)
                p.push_back({32 * np + 16 + k, np, 204 + k, 1});
        p.push_back({0, 0, 116, 4});
        p.push_back({32, 1, 116, 4});
        return p;
    }();
    return ports;
}
// The port at front f, or nullptr.
const Port *PortAt(uint32_t f)
{
    for (const Port &p : Ports())
        if (p.front == f)
            return &p;
    return nullptr;
}
const Quad kNone4 = Untouched();
const Quad kFiller = {255, 255, 255, 255}; // what a hole or a past-the-table index reads as

class MarutaTest : public LibTest {
  protected:
    MarutaTest() : LibTest(0x3D02C1) {}
};

TEST_F(MarutaTest, CardSummaryAndFixedAnswers)
{
    EXPECT_EQ(card_np_api, &cvn_np_api_maruta);
    EXPECT_EQ(cvn_np_version_get()->ver_major, 5);
    EXPECT_EQ(cvn_np_version_get()->ver_minor, 'c');
    EXPECT_EQ(cvn_max_mtu(), 9216u);
    EXPECT_EQ(cvn_np_how_many(), 2u);
    EXPECT_EQ(cvn_np_chip_how_many(), 2u);
    const subslot_info *s = cvn_np_subslot_info_get();
    EXPECT_EQ((Quad{s->num_of_subslots, s->max_ports_per_subslot, s->max_of_ifsubsys_per_subslot,
                    s->spare}),
              (Quad{1, 24, 4, 255}));
    const port_info *card = cvn_np_port_info_get(); // single records, no END after them
    EXPECT_EQ(std::make_pair(card->num_ports, card->port_type), std::make_pair(1u, 4u));
    const port_info *combo = cvn_np_port_info_subslot(0x0);
    EXPECT_EQ(std::make_pair(combo->num_ports, combo->port_type), std::make_pair(24u, 2u));
    EXPECT_EQ(cvn_np_info_num_local_ports(0), 11u);
    EXPECT_EQ(cvn_np_info_num_local_ports(1), 11u);
    EXPECT_EQ(cvn_np_first_phys_port_on_np(0, nullptr), kInvalid);
    EXPECT_EQ(cvn_np_set_if_subsys_type(3, 7), 0u);
    uint32_t count = kSentinel, first = kSentinel;
    EXPECT_EQ(cvn_np_subslot_to_np_list(0, &count, nullptr), kInvalid);
    EXPECT_EQ(cvn_np_subslot_to_np_list(9, &count, &first), 0u);
    EXPECT_EQ(std::make_pair(count, first), std::make_pair(2u, 0u));
    EXPECT_EQ(cvn_np_to_cpu_port_map(1), 3u);
    EXPECT_EQ(cvn_np_sim_ifsubsys_queries(), 0u);

    EXPECT_DEATH(cvn_np_port_info_subslot(1), Report("subslot == 0"));
    EXPECT_DEATH(cvn_np_info_num_local_ports(2), Report("np_id < cvn_np_how_many()"));
}

TEST_F(MarutaTest, TheOtherCardTypeIsServedAlike)
{
    cardtype = 0x3D02DA;
    ASSERT_EQ(cvn_np_lib_init(0x3D02DA), 0u);
    EXPECT_EQ(card_np_api, &cvn_np_api_maruta);
    EXPECT_EQ(cvn_np_front_port_to_np_port(0x31), 204u + 1);
}

TEST_F(MarutaTest, InstancePortInfoFollowsTheReportedType)
{
    const std::vector<std::pair<uint32_t, std::pair<uint32_t, uint32_t>>> cases = {
        {k100, {1, 4}},  {k10, {10, 1}}, {kNone, {0, 8}},
        {k100G, {0, 8}}, {k10G, {0, 8}}, {kFails, {0, 8}}}; // a failed query goes on with type NONE
    for (const auto &[type, record] : cases) {
        for (uint32_t inst = 0; inst < 4; ++inst) {
            SCOPED_TRACE(testing::Message() << "instance " << inst << " type " << std::hex << type);
            Plug(inst, type);
            const port_info *p = cvn_np_port_info_from_subslot_ifsubinst(0, inst);
            EXPECT_EQ(std::make_pair(p->num_ports, p->port_type), record);
            // The instance is encoded into a front port: 17 lands on instance 1.
            EXPECT_EQ(cvn_np_port_info_from_subslot_ifsubinst(0, inst + 16), p);
            if (type != kFails) {
                EXPECT_EQ(aux_cvn_np_port_info_get(0, inst + 5, type), p);
            }
        }
    }
    EXPECT_DEATH(cvn_np_port_info_from_subslot_ifsubinst(1, 0), Report("subslot == 0"));
    EXPECT_DEATH(aux_cvn_np_port_info_get(1, 0, k10), Report("subslot_num == 0"));
}

TEST_F(MarutaTest, InstanceQueryAsksBits7To4AndPassesAFailureBack)
{
    for (uint32_t inst = 0; inst < 16; ++inst)
        Plug(inst, 0x20000 + inst);
    Plug(5, kFails);
    for (uint32_t f = 0; f < 0x300; f += 7) {
        SCOPED_TRACE(testing::Message() << "front 0x" << std::hex << f);
        const uint32_t inst = (f >> 4) & 0xF;
        Quad out = kNone4;
        const uint32_t status = aux_cvn_np_front_port_to_ifsubsys(f, &out[0], &out[1], &out[2]);
        if (inst == 5) {
            EXPECT_EQ(status, kFailStatus);
            EXPECT_EQ(out, kNone4);
        } else {
            EXPECT_EQ(status, 0u);
            EXPECT_EQ(out, (Quad{0, inst, 0x20000 + inst, kSentinel}));
        }
    }
}

TEST_F(MarutaTest, FrontPortReadsItsTableEntryWithoutAskingThePlatform)
{
    for (uint32_t f = 0; f < 0x120; ++f) {
        SCOPED_TRACE(testing::Message() << "front " << f);
        const Port *p = PortAt(f);
        const Quad want = p ? Quad{p->np, p->np_port, f, p->type} : kFiller;
        const bool past = f > 57;
        EXPECT_EQ(cvn_np_front_port_to_np(f), past ? 255 : want[0]);
        EXPECT_EQ(cvn_np_front_port_to_np_port(f), past ? 255 : want[1]);
        EXPECT_EQ(cvn_np_front_port_to_port_type(f), past ? 255 : want[3]);
        Quad out = kNone4;
        EXPECT_EQ(cvn_np_front_port_to_face_plate_port(f, &out[2], &out[3]), 0u);
        EXPECT_EQ(cvn_np_front_port_mapping_info(f, &out[0], &out[1], nullptr, nullptr), 0u);
        EXPECT_EQ(out, past ? kNone4 : want);
    }
    EXPECT_EQ(cvn_np_sim_ifsubsys_queries(), 0u);
}

TEST_F(MarutaTest, NpLocalPortFindsItsFrontPort)
{
    for (const Port &p : Ports()) {
        SCOPED_TRACE(testing::Message() << "front " << p.front);
        Quad out = kNone4;
        aux_cvn_np_info_to_mapping_info(p.np, p.np_port, 0x1234, &out[0], &out[1], &out[2]);
        EXPECT_EQ(out, (Quad{p.front, p.front, p.type, kSentinel}));
        out = kNone4;
        EXPECT_EQ(cvn_np_info_to_fplate_porttype(p.np, p.np_port, &out[0], &out[1]), 0u);
        EXPECT_EQ(cvn_np_info_to_front_port(p.np, p.np_port, &out[2]), 0u);
        EXPECT_EQ(out, (Quad{p.front, p.type, p.front, kSentinel}));
    }
    Quad out = kNone4;
    aux_cvn_np_info_to_mapping_info(0, 214, 0, &out[0], &out[1], &out[2]);
    aux_cvn_np_info_to_mapping_info(0x10000, 116, 0, &out[0], &out[1], &out[2]);
    EXPECT_EQ(cvn_np_info_to_fplate_porttype(0, 203, &out[0], &out[1]), 0u);
    EXPECT_EQ(out, kNone4);
    aux_cvn_np_info_to_mapping_info(255, 255, 0, &out[0], &out[1], &out[2]); // a hole matches
    EXPECT_EQ(out, (Quad{255, 255, 255, kSentinel}));
    EXPECT_EQ(cvn_np_info_to_fplate_porttype(2, 116, &out[0], &out[1]), kInvalid);
    EXPECT_EQ(cvn_np_info_to_front_port(2, 116, &out[0]), kInvalid);
}

TEST_F(MarutaTest, FirstPortsOfAnNpAreFixed)
{
    for (uint32_t np : {0u, 1u, 7u}) {
        Quad out = kNone4;
        EXPECT_EQ(cvn_np_first_front_port_on_np(np, &out[0]), 0u);
        EXPECT_EQ(cvn_np_first_fplate_porttype_on_np(np, &out[1], &out[2]), 0u);
        EXPECT_EQ(out, (Quad{np == 0 ? 0u : 48u, 4, np == 0 ? 20u : 21u, kSentinel}));
    }
    // The outputs are required; a NULL one is simply not written.
    EXPECT_EQ(cvn_np_first_front_port_on_np(0, nullptr), 0u);
    EXPECT_EQ(cvn_np_first_fplate_porttype_on_np(0, nullptr, nullptr), 0u);
}

TEST_F(MarutaTest, FaceplatePortIndexesTheTableWhateverThePortType)
{
    for (uint32_t fp : {0u, 5u, 16u, 25u, 26u, 32u, 50u, 57u, 58u, 59u, 300u, 0xFFFFFFFFu}) {
        for (uint32_t port_type : {0u, 1u, 4u, 0x10041u}) {
            SCOPED_TRACE(testing::Message() << "faceplate " << fp << " type " << port_type);
            const Port *p = PortAt(fp);
            const Quad want =
                p ? Quad{p->np, p->np_port, fp, kSentinel} : Quad{255, 255, 255, kSentinel};
            EXPECT_EQ(cvn_faceplate_porttype_to_np(port_type, fp), want[0]);
            EXPECT_EQ(cvn_faceplate_porttype_to_np_port(port_type, fp), want[1]);
            EXPECT_EQ(cvn_faceplate_porttype_to_phys_port(port_type, fp), fp);
            Quad out = kNone4;
            EXPECT_EQ(cvn_faceplate_porttype_mapping_info(port_type, fp, &out[0], &out[1], &out[2]),
                      0u);
            EXPECT_EQ(out, want);
        }
    }
}

TEST_F(MarutaTest, ComplexIsItsOwnNpOnTheOneSubslot)
{
    for (uint32_t c = 0; c < 2; ++c) {
        EXPECT_EQ(cvn_np_complex_to_subslot(static_cast<uint8_t>(c)), 0u);
        EXPECT_EQ(cvn_np_complex_to_np(static_cast<uint8_t>(c), 1), c);
        Quad out = kNone4;
        EXPECT_EQ(cvn_np_complex_to_subslot_list(static_cast<uint8_t>(c), nullptr, &out[1]), 0u);
        EXPECT_EQ(out, kNone4);
        EXPECT_EQ(cvn_np_complex_to_subslot_list(static_cast<uint8_t>(c), &out[0], &out[1]), 0u);
        EXPECT_EQ(out, (Quad{1, 0, kSentinel, kSentinel}));
    }
    EXPECT_DEATH(cvn_np_complex_to_subslot(2), Report("np_complex < cvn_np_how_many()"));
    EXPECT_DEATH(cvn_np_complex_to_subslot_list(2, nullptr, nullptr),
                 Report("np_complex < cvn_np_how_many()"));
    EXPECT_DEATH(cvn_np_complex_to_np(2, 0), Report("np_complex < cvn_np_how_many()"));
}

TEST_F(MarutaTest, FrontPortEncodingIsInstanceAndPort)
{
    for (uint32_t v = 0; v < 0x240; v += 3) {
        SCOPED_TRACE(testing::Message() << "value 0x" << std::hex << v);
        EXPECT_EQ(cvn_np_lib_set_subslot_phy_port(1, v), v & 0xFF);
        EXPECT_EQ(cvn_np_lib_set_subslot_ifsubinst_ifsubinst_port(0, v, v + 1),
                  ((v * 16) & 0xF0) | ((v + 1) & 0xF));
        EXPECT_EQ(cvn_np_lib_get_subslot(v), 0u);
        EXPECT_EQ(cvn_np_lib_get_subslot_port(v), v & 0xFF);
        EXPECT_EQ(cvn_np_lib_get_port(v), v & 0xFF);
        EXPECT_EQ(cvn_np_lib_get_ifsubinst(v), (v / 16) % 16);
        EXPECT_EQ(cvn_np_lib_get_ifsubinst_port(v), v % 16);
    }
}

TEST_F(MarutaTest, TupleIndexAndFrontPortAreInverse)
{
    const auto &ports = Ports();
    for (uint32_t i = 0; i < ports.size(); ++i) {
        const uint16_t inst = static_cast<uint16_t>(i / 3), port = static_cast<uint16_t>(i - i / 3);
        EXPECT_EQ(cvn_np_lib_get_phys_port_tuple45(i % 5, 1, inst, port), ports[i].front);
    }
    EXPECT_EQ(cvn_np_lib_get_phys_port_tuple45(4, 0, 20, 2), 255u);     // the end entry
    EXPECT_EQ(cvn_np_lib_get_phys_port_tuple45(4, 0, 0xFFFF, 9), 255u); // past the table
    for (uint32_t f = 0; f < 0x200; ++f) {
        uint32_t index = kSentinel;
        uint32_t want = 22; // the end entry's front port 255 is compared too
        for (uint32_t i = 0; i < ports.size(); ++i)
            if (ports[i].front == f)
                want = i;
        const bool found = want != 22 || f == 255;
        EXPECT_EQ(aux_cvn_np_front_port_to_ifsubinst(f, &index), found ? 0u : 22u) << f;
        EXPECT_EQ(index, found ? want : kSentinel) << f;
    }
    EXPECT_EQ(aux_cvn_np_front_port_to_ifsubinst(16, nullptr), 22u);
}

TEST_F(MarutaTest, InstancePortMapsThroughItsInstanceTable)
{
    for (uint32_t inst = 0; inst < 4; ++inst) {
        for (uint32_t k = 0; k < 12; ++k) {
            SCOPED_TRACE(testing::Message() << "instance " << inst << " index " << k);
            const bool present = k < (inst % 2 == 0 ? 1u : 10u);
            const Port *p = PortAt(16 * inst + k);
            Quad out = kNone4;
            aux_cvn_np_front_port_to_mapping_info(inst, k, 0, &out[0], &out[1], &out[2], &out[3]);
            EXPECT_EQ(out, present ? (Quad{p->np, p->np_port, p->front, p->type}) : kFiller);
        }
    }
    EXPECT_DEATH(
        aux_cvn_np_front_port_to_mapping_info(4, 0, k10, nullptr, nullptr, nullptr, nullptr),
        Report("0"));
}

TEST_F(MarutaTest, EmptySlotsAnswerInvalidAndWriteNothing)
{
    Quad out = kNone4;
    EXPECT_EQ(aux_cvn_np_info_num_local_ports(0, 0, k10), kInvalid);
    EXPECT_EQ(aux_cvn_np_first_port_on_np(0, 0, k10, &out[0], &out[1], &out[2]), kInvalid);
    EXPECT_EQ(aux_cvn_faceplate_to_mapping_info(1, 0, 1, &out[0], &out[1], &out[2]), kInvalid);
    const port_mapping_entry e = {16, 0, 204, 16, 1};
    const port_mapping_entry *const entries[] = {&e};
    aux_np_port_to_mapping_info(entries, 204, 1, &out[0], &out[1], &out[2]);
    EXPECT_EQ(out, kNone4);
}

TEST_F(MarutaTest, FillerLeavesOnlySlots40And42To44Empty)
{
    std::array<void (*)(), CVN_NP_API_SLOTS> slots{};
    static_assert(sizeof(slots) == sizeof(cvn_np_api));
    std::memcpy(slots.data(), &cvn_np_api_maruta, sizeof(slots));
    for (size_t i = 0; i < slots.size(); ++i) {
        const bool empty = i == 40 || (i >= 42 && i <= 44);
        EXPECT_EQ(slots[i] == nullptr, empty) << "slot " << i;
    }
}

} // namespace
