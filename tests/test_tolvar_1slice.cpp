// tolvar 1-slice: one NP serves two bays (subslots 0 and 1); each bay has
// its own EP wiring, bay 1 on the NP's upper port ranges.
#include "test_tolvar_support.h"

namespace {

using namespace cvn_test;
using namespace cvn_test::tolvar;

std::string Report(const char *condition)
{
    return ReportLine("cvn_np_lib_1slice_tolvar.cpp", condition);
}

std::vector<Ep> Bay0Eps()
{
    return {
        {"2x10GE", k2x10, kPt10, Ports(2, 0, 192, 2), {{2, kPt10}}},
        {"4x10GE", k4x10, kPt10, Ports(4, 0, 192, 2), {{4, kPt10}}},
        {"8x10GE", k8x10, kPt10, Ports(8, 0, 192), {{8, kPt10}}},
        {"2x40GE", k2x40, kPt40, Ports(2, 0, 96), {{2, kPt40}}},
        {"1x40GE", k1x40, kPt40, Ports(1, 0, 96), {{1, kPt40}}},
        {"20 untyped", k20None, kPtNone, Ports(10, 0, 16) + Ports(10, 10, 28), {{20, kPtNone}}},
        {"16x10GE", k16x10, kPt10, Ports(8, 0, 192) + Ports(8, 8, 204), {{16, kPt10}}},
        {"20x10GE", k20x10, kPt10, Ports(10, 0, 192) + Ports(10, 10, 204), {{20, kPt10}}},
        {"20x10GE B", k20x10B, kPt10, Ports(10, 0, 192) + Ports(10, 10, 204), {{20, kPt10}}},
    };
}
std::vector<Ep> Bay1Eps()
{
    return {
        {"2x10GE", k2x10, kPt10, Ports(2, 0, 204, 2), {{2, kPt10}}},
        {"4x10GE", k4x10, kPt10, Ports(4, 0, 204, 2), {{4, kPt10}}},
        {"8x10GE", k8x10, kPt10, Ports(8, 0, 204), {{8, kPt10}}},
        {"2x40GE", k2x40, kPt40, Ports(2, 0, 99), {{2, kPt40}}},
        {"1x40GE", k1x40, kPt40, Ports(1, 0, 99), {{1, kPt40}}},
        {"20 untyped", k20None, kPtNone, Ports(10, 0, 128) + Ports(10, 10, 140), {{20, kPtNone}}},
    };
}

// A split bay's instance type: the ports of instance i that the bay wires
// (bay 1 wires instance 0 only), its list and its local-port count.
struct Instance {
    const char *name;
    uint32_t type;
    uint32_t port_type;
    std::vector<Port> ports[2];
    List list;
    uint32_t counted;
};
std::vector<Instance> Bay0Instances()
{
    return {{"100GE", k100G, kPt100, {Ports(1, 0, 116), Ports(1, 16, 117)}, {{2, kPt100}}, 1},
            {"40GE", k40G, kPt40, {Ports(2, 0, 96), Ports(2, 16, 99)}, {{2, kPt40}}, 2},
            {"10GE", k10G, kPt10, {Ports(10, 0, 192), Ports(10, 16, 204)}, {{10, kPt10}}, 10}};
}
std::vector<Instance> Bay1Instances()
{
    return {{"100GE", k100G, kPt100, {Ports(1, 0, 117), {}}, {{1, kPt100}}, 1},
            {"40GE", k40G, kPt40, {Ports(2, 0, 99), {}}, {{2, kPt40}}, 2},
            {"10GE", k10G, kPt10, {Ports(10, 0, 204), {}}, {{10, kPt10}}, 10}};
}

// Upper-range NP ports of bay 0 are found in bay 0 only where its own EP
// claims them (a split EP's instance 1, or a 20-port EP).
bool Bay0Claims(uint32_t bay0_type, uint32_t np_port)
{
    const bool upper = np_port >= 204 || np_port == 117 || np_port == 99 || np_port == 100;
    return !upper || bay0_type == kSplit || bay0_type == kSplitB || bay0_type == k20x10 ||
           bay0_type == k20x10B;
}

// The first port bits past an instance's wired ports, when that is still
// inside the instance (bay 1's instance 1 has no ports at all).
void ExpectNoEntry(uint32_t front, uint32_t port_type)
{
    SCOPED_TRACE(testing::Message() << "no entry at 0x" << std::hex << front);
    EXPECT_EQ(cvn_np_front_port_to_np_port(front), 0u);
    EXPECT_EQ(cvn_np_front_port_to_port_type(front), 0u);
    Out out = Fresh();
    EXPECT_EQ(cvn_np_front_port_to_face_plate_port(front, &out[0], &out[1]), 0u);
    EXPECT_EQ(out, (Out{0, 0, kSentinel, kSentinel}));
    out = Fresh();
    EXPECT_EQ(cvn_np_front_port_mapping_info(front, &out[0], &out[1], &out[2], &out[3]), 0u);
    EXPECT_EQ(cvn_faceplate_porttype_to_phys_port(port_type, front), kInvalid);
    EXPECT_EQ(cvn_faceplate_porttype_mapping_info(port_type, front, &out[0], &out[1], &out[2]), 0u);
    EXPECT_EQ(out, Fresh());
}

class Tolvar1Test : public TolvarTest {
  protected:
    Tolvar1Test() : TolvarTest(0x3D028C) {}
};

TEST_F(Tolvar1Test, CardSummaryDescribesOneNpOverTwoBays)
{
    EXPECT_EQ(cvn_np_version_get()->ver_minor, 'c');
    EXPECT_EQ(cvn_max_mtu(), 9216u);
    EXPECT_EQ(cvn_np_how_many(), 1u);
    EXPECT_EQ(cvn_np_chip_how_many(), 1u);
    const subslot_info *s = cvn_np_subslot_info_get();
    EXPECT_EQ(s->num_of_subslots, 2);
    EXPECT_EQ(s->max_ports_per_subslot, 20);
    EXPECT_EQ(s->max_of_ifsubsys_per_subslot, 2);
    EXPECT_EQ(s->spare, 0);
    const std::vector<std::pair<uint32_t, uint32_t>> ranges = {
        {0x3D028C, 0x3D028F}, {0x3D0291, 0x3D0295}, {0x3D02D9, 0x3D02D9}};
    for (const auto &[first, last] : ranges) {
        for (uint32_t t = first; t <= last; ++t) {
            cvn_np_lib_init(0x3D0296);
            cardtype = t;
            EXPECT_EQ(cvn_np_lib_init(t), 0u);
            EXPECT_EQ(card_np_api, &cvn_np_api_1slice_tolvar) << std::hex << t;
        }
    }
    EXPECT_EQ(cvn_np_api_1slice_tolvar.cvn_np_info_to_front_port,
              cvn_np_tv_1slice_info_to_front_port);
    EXPECT_EQ(cvn_np_api_1slice_tolvar.aux_np_port_to_mapping_info,
              aux_tv_1slice_np_port_to_mapping_info);
    EXPECT_DEATH(cvn_np_lib_init(0x3D0290), ReportLine("cvn_np_lib.cpp", "0"));
}

TEST_F(Tolvar1Test, EveryPlainEpOfEitherBayMapsOnNpZero)
{
    const std::vector<Ep> bays[2] = {Bay0Eps(), Bay1Eps()};
    for (uint32_t bay = 0; bay < 2; ++bay) {
        for (const Ep &ep : bays[bay]) {
            SCOPED_TRACE(testing::Message() << ep.name << " in bay " << bay);
            cvn_np_sim_reset();
            Install(bay, ep.type);
            for (const Port &p : ep.ports) {
                const uint32_t front = FrontOf(bay, p.bits);
                ExpectPortMaps(front, 0, p.np_port, ep.port_type);
                if (bay == 1 || Bay0Claims(ep.type, p.np_port)) {
                    ExpectNpPortMaps(0, p.np_port, front, ep.port_type);
                } else {
                    ExpectNpPortUnmapped(0, p.np_port, 0); // looked for in the empty bay 1
                }
            }
            EXPECT_EQ(ListOf(cvn_np_port_info_subslot(bay)), ep.list);
            EXPECT_EQ(ListOf(cvn_np_port_info_get()), ep.list);
            EXPECT_EQ(cvn_np_info_num_local_ports(0), ep.type == k16x10 ? 0u : ep.ports.size());
            Out out = Fresh();
            EXPECT_EQ(cvn_np_first_front_port_on_np(0, &out[0]), 0u);
            EXPECT_EQ(cvn_np_first_fplate_porttype_on_np(0, &out[2], &out[1]), 0u);
            EXPECT_EQ(cvn_np_first_phys_port_on_np(bay, &out[3]), 0u);
            EXPECT_EQ(out, (Out{FrontOf(bay, 0), FrontOf(bay, 0), ep.port_type, FrontOf(bay, 0)}));
            EXPECT_EQ(cvn_np_first_phys_port_on_np(1 - bay, &out[3]), kInvalid);
            ExpectNoEntry(FrontOf(bay, static_cast<uint32_t>(ep.ports.size())), ep.port_type);
        }
    }
}

TEST_F(Tolvar1Test, SplitBaysMapInstancesThroughTheIndexMaps)
{
    const std::vector<Instance> bays[2] = {Bay0Instances(), Bay1Instances()};
    for (uint32_t split : {kSplit, kSplitB}) {
        for (uint32_t bay = 0; bay < 2; ++bay) {
            for (const Instance &inst : bays[bay]) {
                SCOPED_TRACE(testing::Message() << split << " in bay " << bay << ": " << inst.name);
                cvn_np_sim_reset();
                InstallSplit(bay, split, inst.type, inst.type);
                for (uint32_t i = 0; i < 2; ++i) {
                    for (const Port &p : inst.ports[i]) {
                        ExpectPortMaps(FrontOf(bay, p.bits), 0, p.np_port, inst.port_type);
                        ExpectNpPortMaps(0, p.np_port, FrontOf(bay, p.bits), inst.port_type);
                    }
                    const uint32_t past = 16 * i + static_cast<uint32_t>(inst.ports[i].size());
                    if (inst.type != k100G)
                        ExpectNoEntry(FrontOf(bay, past), inst.port_type);
                    EXPECT_EQ(ListOf(cvn_np_port_info_from_subslot_ifsubinst(bay, i)), inst.list);
                }
                EXPECT_EQ(cvn_np_info_num_local_ports(0), 2 * inst.counted);
                uint32_t f = kSentinel;
                EXPECT_EQ(cvn_np_first_phys_port_on_np(bay, &f), 0u);
                EXPECT_EQ(f, FrontOf(bay, 0));
            }
        }
    }
}

TEST_F(Tolvar1Test, NpPortsFindTheirBayByBayZerosType)
{
    // 204 is bay 0's second instance, bay 0's own 20-port EP, or bay 1.
    InstallSplit(0, kSplit, k10G, k10G);
    Install(1, k2x10);
    ExpectNpPortMaps(0, 204, 0x10, kPt10);
    Install(0, k20x10B);
    ExpectNpPortMaps(0, 204, 0x0A, kPt10);
    for (uint32_t bay0 : {k2x10, k16x10, kSplitOne, kUnknownEp}) {
        Install(0, bay0);
        ExpectNpPortMaps(0, 204, 0x40, kPt10);
        ExpectNpPortMaps(0, 206, 0x41, kPt10);
    }
    Install(0, k2x10);
    ExpectNpPortMaps(0, 194, 0x01, kPt10);
    for (uint32_t np_port : {150u, 115u, 202u, 15u, 38u, 127u})
        ExpectNpPortUnmapped(0, np_port, kInvalid);
    // A port of the lower ranges that bay 0's EP does not carry.
    Install(0, k20None);
    ExpectNpPortNotFound(0, 26, 0);
    // Both bays must answer, whichever one holds the port.
    ASSERT_EQ(cvn_np_sim_fail_ifsubsys(1, kAny, kFailStatus), 0);
    ExpectNpPortUnmapped(0, 16, kInvalid);
    EXPECT_EQ(cvn_np_info_num_local_ports(0), 20u);
    Out out = Fresh();
    EXPECT_EQ(cvn_np_info_to_front_port(1, 16, &out[0]), kInvalid);
    EXPECT_EQ(out, Fresh());
}

TEST_F(Tolvar1Test, LocalPortsAndFirstPortsWalkBothBays)
{
    Install(0, k20x10);
    Install(1, k2x10);
    EXPECT_EQ(cvn_np_info_num_local_ports(0), 22u);
    InstallSplit(0, kSplitB, k10G, k40G);
    Install(1, k20None);
    EXPECT_EQ(cvn_np_info_num_local_ports(0), 32u);

    cvn_np_sim_reset();
    Install(1, k2x40);
    Out out = Fresh();
    EXPECT_EQ(cvn_np_first_front_port_on_np(0, &out[0]), 0u);
    EXPECT_EQ(cvn_np_first_fplate_porttype_on_np(0, &out[2], &out[1]), 0u);
    EXPECT_EQ(out, (Out{0x40, 0x40, kPt40, kSentinel}));
    EXPECT_EQ(ListOf(cvn_np_port_info_get()), (List{{2, kPt40}}));

    cvn_np_sim_reset(); // nothing anywhere
    out = Fresh();
    EXPECT_EQ(cvn_np_first_front_port_on_np(0, &out[0]), kInvalid);
    EXPECT_EQ(cvn_np_first_fplate_porttype_on_np(0, &out[1], &out[2]), kInvalid);
    EXPECT_EQ(cvn_np_first_phys_port_on_np(1, &out[3]), kInvalid);
    EXPECT_EQ(out, Fresh());
    EXPECT_EQ(cvn_np_port_info_get(), tv_1slice_dummy_port_info);
    EXPECT_EQ(cvn_np_info_num_local_ports(0), 0u);

    // Failed queries: slot 18 passes bay 1's status on, slot 16 does not.
    Install(0, k2x10);
    cvn_np_sim_fail_all(kFailStatus);
    EXPECT_EQ(cvn_np_first_front_port_on_np(0, &out[0]), kInvalid);
    EXPECT_EQ(cvn_np_first_fplate_porttype_on_np(0, &out[1], &out[2]), kFailStatus);
    EXPECT_EQ(cvn_np_first_phys_port_on_np(0, &out[3]), kInvalid);
    EXPECT_EQ(out, Fresh());
    EXPECT_EQ(cvn_np_info_num_local_ports(0), 0u);
    EXPECT_EQ(cvn_np_port_info_subslot(0), tv_1slice_dummy_port_info);
    for (uint32_t front : {0x01u, 0x41u})
        ExpectFrontPortUnanswered(front, kFailStatus);
    ExpectNpPortUnmapped(0, 192, kInvalid);
}

TEST_F(Tolvar1Test, EmptyBaysAnswerInvalidOrTheEmptyList)
{
    for (uint32_t bay = 0; bay < 2; ++bay) {
        ExpectFrontPortUnanswered(FrontOf(bay, 1), kInvalid);
        EXPECT_EQ(cvn_np_port_info_subslot(bay), tv_1slice_dummy_port_info);
        EXPECT_EQ(cvn_np_port_info_from_subslot_ifsubinst(bay, 0), tv_1slice_dummy_port_info);
    }
    ExpectNpPortUnmapped(0, 192, 0);
    ExpectNpPortUnmapped(0, 140, 0);
}

TEST_F(Tolvar1Test, TypesWithoutARowInTheBayMapNothing)
{
    for (uint32_t type : {k16x10, k20x10, k20x10B}) {
        SCOPED_TRACE(type);
        cvn_np_sim_reset();
        Install(1, type);
        ExpectNoEntry(0x41, kPt10);
        EXPECT_EQ(aux_cvn_np_port_info_get(1, 0, type), nullptr);
        EXPECT_EQ(cvn_np_port_info_subslot(1), nullptr);
        EXPECT_EQ(aux_cvn_np_info_num_local_ports(1, 0, type), 0u);
        EXPECT_EQ(cvn_np_info_num_local_ports(0), 0u);
        Out out = Fresh();
        EXPECT_EQ(aux_cvn_np_first_port_on_np(1, 0, type, &out[0], &out[1], &out[2]), kInvalid);
        EXPECT_EQ(cvn_np_first_front_port_on_np(0, &out[0]), kInvalid);
        aux_cvn_np_info_to_mapping_info(0, 204, type, &out[0], &out[1], &out[2]);
        EXPECT_EQ(out, Fresh());
    }
    // 0x10003 has a row in neither bay.
    cvn_np_sim_reset();
    InstallSplit(0, kSplit, k40GAlt, k40GAlt);
    EXPECT_EQ(aux_cvn_np_port_info_get(0, 0, k40GAlt), tv_1slice_dummy_port_info);
    EXPECT_EQ(cvn_np_port_info_from_subslot_ifsubinst(0, 1), tv_1slice_dummy_port_info);
    EXPECT_EQ(aux_cvn_np_info_num_local_ports(0, 0, k40GAlt), 1u);
    EXPECT_EQ(cvn_np_info_num_local_ports(0), 2u);
    Out out = Fresh();
    EXPECT_EQ(cvn_faceplate_porttype_to_np_port(kPt40, 0x11), kInvalid);
    EXPECT_EQ(cvn_np_first_front_port_on_np(0, &out[0]), kInvalid);
    ExpectNpPortUnmapped(0, 99, 0);
    EXPECT_EQ(out, Fresh());
    EXPECT_DEATH(cvn_np_front_port_to_np(0x11), Report("0"));
    // Index-map answers of 255, and port bits past the maps.
    aux_cvn_np_front_port_to_mapping_info(0, 0x0A, k10G, &out[0], &out[1], &out[2], &out[3]);
    aux_cvn_np_front_port_to_mapping_info(0, 0x02, k40G, &out[0], &out[1], &out[2], &out[3]);
    aux_cvn_np_front_port_to_mapping_info(0, 0x25, k10G, &out[0], &out[1], &out[2], &out[3]);
    EXPECT_EQ(out, Fresh());
    aux_cvn_np_front_port_to_mapping_info(0, 0x13, k10G, &out[0], &out[1], &out[2], &out[3]);
    EXPECT_EQ(out, (Out{0, 207, 0x13, kPt10}));
}

TEST_F(Tolvar1Test, TheComplexSpansBothBays)
{
    EXPECT_EQ(cvn_np_complex_to_subslot(0), 0u);
    EXPECT_EQ(cvn_np_complex_to_np(0, 1), 0u);
    uint32_t count = kSentinel;
    std::array<uint32_t, 3> list = {kSentinel, kSentinel, kSentinel};
    EXPECT_EQ(cvn_np_complex_to_subslot_list(0, &count, list.data()), 0u);
    EXPECT_EQ(count, 2u);
    EXPECT_EQ(list, (std::array<uint32_t, 3>{0, 1, kSentinel}));
    for (uint8_t subslot : {0, 1}) {
        Out out = Fresh();
        EXPECT_EQ(cvn_np_subslot_to_np_list(subslot, &out[0], &out[1]), 0u);
        EXPECT_EQ(out, (Out{1, 0, kSentinel, kSentinel}));
    }
    EXPECT_EQ(cvn_np_subslot_to_np_list(1, nullptr, &count), kInvalid);
}

TEST_F(Tolvar1Test, EveryPreconditionEndsInItsReport)
{
    uint32_t a = 0, b = 0;
    EXPECT_DEATH(cvn_np_port_info_subslot(2),
                 Report("subslot < tv_1slice_card_np_info->num_subslot"));
    EXPECT_DEATH(cvn_np_port_info_from_subslot_ifsubinst(2, 0),
                 Report("subslot < tv_1slice_card_np_info->num_subslot"));
    EXPECT_DEATH(aux_cvn_np_port_info_get(2, 0, k2x10),
                 Report("subslot_num < tv_1slice_card_np_info->num_subslot"));
    EXPECT_DEATH(aux_cvn_np_info_num_local_ports(2, 0, k2x10),
                 Report("subslot_num < tv_1slice_card_np_info->num_subslot"));
    EXPECT_DEATH(aux_cvn_np_info_num_local_ports(1, 1, k2x10),
                 Report("np_num < tv_1slice_card_np_info->num_complex"));
    EXPECT_DEATH(aux_cvn_np_info_to_mapping_info(1, 192, k2x10, &a, &b, nullptr),
                 Report("np_num < tv_1slice_card_np_info->num_complex"));
    EXPECT_DEATH(cvn_np_info_num_local_ports(1), Report("np_id < cvn_np_how_many()"));
    EXPECT_DEATH(cvn_np_first_front_port_on_np(0, nullptr), Report("phys_front_port != NULL"));
    EXPECT_DEATH(cvn_np_first_front_port_on_np(1, &a), Report("np_id < cvn_np_how_many()"));
    EXPECT_DEATH(cvn_np_first_phys_port_on_np(0, nullptr), Report("phys_front_port != NULL"));
    EXPECT_DEATH(cvn_np_first_phys_port_on_np(2, &a), Report("subslot < CVN_NP_TOTAL_SUBSLOTS"));
    EXPECT_DEATH(cvn_np_first_fplate_porttype_on_np(0, nullptr, &b), Report("port_type != NULL"));
    EXPECT_DEATH(cvn_np_first_fplate_porttype_on_np(0, &a, nullptr), Report("fplate_port != NULL"));
    EXPECT_DEATH(cvn_np_first_fplate_porttype_on_np(1, &a, &b),
                 Report("np_id < cvn_np_how_many()"));
    EXPECT_DEATH(cvn_np_complex_to_subslot(1), Report("np_complex < cvn_np_how_many()"));
    EXPECT_DEATH(cvn_np_complex_to_subslot_list(1, &a, &b),
                 Report("np_complex < cvn_np_how_many()"));
    EXPECT_DEATH(cvn_np_complex_to_np(1, 0), Report("np_complex < cvn_np_how_many()"));
    for (uint32_t type : {k2x10, k100G, k40G})
        EXPECT_DEATH(
            aux_cvn_np_front_port_to_mapping_info(0, 0x81, type, &a, nullptr, nullptr, nullptr),
            Report("subslot < CVN_NP_TOTAL_SUBSLOT_TOLVAR"));
    EXPECT_DEATH(aux_cvn_np_first_port_on_np(2, 0, k2x10, &a, nullptr, nullptr),
                 Report("subslot < CVN_NP_TOTAL_SUBSLOT_TOLVAR"));
    Install(2, k2x10);
    EXPECT_DEATH(cvn_faceplate_porttype_to_np(kPt10, 0x81),
                 Report("subslot < CVN_NP_TOTAL_SUBSLOT_TOLVAR"));
    Install(1, k2x40);
    EXPECT_DEATH(cvn_faceplate_porttype_to_np(kPt10, 0x41),
                 Report("port_type == ep_data->port_type"));
    for (uint32_t type : {k40GAlt, kSplit, kNone})
        EXPECT_DEATH(
            aux_cvn_np_front_port_to_mapping_info(0, 0x01, type, &a, nullptr, nullptr, nullptr),
            Report("0"));
    EXPECT_DEATH(aux_cvn_np_info_num_local_ports(0, 0, kSplitB), Report("0"));
    EXPECT_DEATH(aux_cvn_np_info_to_mapping_info(0, 192, kUnknownEp, &a, nullptr, nullptr),
                 Report("0"));
    // An NP port no bay owns ends the operation before the type is looked at.
    aux_cvn_np_info_to_mapping_info(0, 150, kUnknownEp, &a, nullptr, nullptr);
    Install(0, kUnknownEp);
    EXPECT_DEATH(cvn_faceplate_porttype_to_np(kPt10, 0x01), Report("0"));
}

} // namespace
