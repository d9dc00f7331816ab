// tolvar 2-slice: two subslots, NP n serves subslot n; each subslot holds
// one EP (plain) or two instances (split) as the platform reports.
#include <cstring>

#include "test_tolvar_support.h"

namespace {

using namespace cvn_test;
using namespace cvn_test::tolvar;

std::string Report(const char *condition) { return ReportLine("cvn_np_lib_tolvar.cpp", condition); }

// The plain EPs and their ports, as the card wires them in either subslot.
std::vector<Ep> PlainEps()
{
    return {
        {"2x10GE", k2x10, kPt10, Ports(2, 0, 192, 2), {{2, kPt10}}},
        {"4x10GE", k4x10, kPt10, Ports(4, 0, 192, 2), {{4, kPt10}}},
        {"8x10GE", k8x10, kPt10, Ports(8, 0, 192), {{8, kPt10}}},
        {"16x10GE", k16x10, kPt10, Ports(8, 0, 192) + Ports(8, 8, 204), {{16, kPt10}}},
        {"20x10GE", k20x10, kPt10, Ports(10, 0, 192) + Ports(10, 10, 204), {{20, kPt10}}},
        {"20x10GE B", k20x10B, kPt10, Ports(10, 0, 192) + Ports(10, 10, 204), {{20, kPt10}}},
        {"2x40GE", k2x40, kPt40, Ports(2, 0, 96), {{2, kPt40}}},
        {"1x40GE", k1x40, kPt40, Ports(1, 0, 96), {{1, kPt40}}},
        {"20 untyped", k20None, kPtNone, Ports(10, 0, 16) + Ports(10, 10, 28), {{20, kPtNone}}},
    };
}

// The instance types of a split subslot: instance i's port p has port bits
// 16i + p and NP-local port base[i] + p; `counted` is its local-port count.
struct Instance {
    const char *name;
    uint32_t type;
    uint32_t port_type;
    uint32_t ports;
    uint32_t base[2];
    uint32_t counted;
    List list;
};
const std::vector<Instance> &Instances()
{
    static const std::vector<Instance> all = {
        {"100GE", k100G, kPt100, 1, {116, 117}, 1, {{2, kPt100}}},
        {"40GE", k40G, kPt40, 2, {96, 99}, 2, {{2, kPt40}}},
        {"10GE", k10G, kPt10, 10, {192, 204}, 10, {{10, kPt10}}},
        {"40GE alt", k40GAlt, kPt40, 2, {96, 99}, 1, {{2, kPt40}}},
    };
    return all;
}

bool Counted(uint32_t type) { return type != k16x10; }

class Tolvar2Test : public TolvarTest {
  protected:
    Tolvar2Test() : TolvarTest(0x3D0296) {}
};

TEST_F(Tolvar2Test, CardSummaryDescribesTwoSubslotsWithAnNpEach)
{
    const card_version *v = cvn_np_version_get();
    ASSERT_NE(v, nullptr);
    EXPECT_EQ(v->ver_major, 5);
    EXPECT_EQ(v->ver_minor, 'c');
    EXPECT_EQ(cvn_max_mtu(), 9216u);
    EXPECT_EQ(cvn_np_how_many(), 2u);
    EXPECT_EQ(cvn_np_chip_how_many(), 2u);
    const subslot_info *s = cvn_np_subslot_info_get();
    ASSERT_NE(s, nullptr);
    EXPECT_EQ(s->num_of_subslots, 2);
    EXPECT_EQ(s->max_ports_per_subslot, 20); // the widest EP
    EXPECT_EQ(s->max_of_ifsubsys_per_subslot, 2);
    EXPECT_EQ(s->spare, 0);
    EXPECT_EQ(cvn_np_to_cpu_port_map(1), 3u);
    EXPECT_EQ(cvn_np_set_if_subsys_type(1, 2), 0u);
    uint32_t f = kSentinel;
    EXPECT_EQ(cvn_np_first_phys_port_on_np(0, &f), kInvalid);
    EXPECT_EQ(f, kSentinel);
}

TEST_F(Tolvar2Test, EveryCardTypeOfTheFamilySelectsItsTable)
{
    const std::vector<std::pair<uint32_t, uint32_t>> ranges = {
        {0x3D0296, 0x3D0299}, {0x3D029B, 0x3D029F}, {0x3D02D8, 0x3D02D8}};
    for (const auto &[first, last] : ranges) {
        for (uint32_t t = first; t <= last; ++t) {
            cvn_np_lib_init(0x3D0274);
            cardtype = t;
            EXPECT_EQ(cvn_np_lib_init(t), 0u);
            EXPECT_EQ(card_np_api, &cvn_np_api_2slice_tolvar) << std::hex << t;
        }
    }
    // The table holds the family's functions under their own names, every
    // slot filled.
    EXPECT_EQ(cvn_np_api_2slice_tolvar.cvn_np_front_port_to_np, cvn_np_tolvar_front_port_to_np);
    EXPECT_EQ(cvn_np_api_2slice_tolvar.aux_cvn_faceplate_to_mapping_info,
              aux_cvn_tolvar_faceplate_to_mapping_info);
    EXPECT_EQ(cvn_np_api_2slice_tolvar.aux_np_port_to_mapping_info,
              aux_tolvar_np_port_to_mapping_info);
    std::array<void (*)(), CVN_NP_API_SLOTS> slots{};
    static_assert(sizeof(slots) == sizeof(cvn_np_api));
    std::memcpy(slots.data(), &cvn_np_api_2slice_tolvar, sizeof(slots));
    for (int i = 0; i < CVN_NP_API_SLOTS; ++i)
        EXPECT_NE(slots[i], nullptr) << "slot " << i;
    EXPECT_DEATH(cvn_np_lib_init(0x3D029A), ReportLine("cvn_np_lib.cpp", "0"));
}

TEST_F(Tolvar2Test, EveryPlainEpMapsEachPortOnTheSubslotsNp)
{
    for (const Ep &ep : PlainEps()) {
        for (uint32_t s = 0; s < 2; ++s) {
            SCOPED_TRACE(testing::Message() << ep.name << " in subslot " << s);
            cvn_np_sim_reset();
            Install(s, ep.type);
            for (const Port &p : ep.ports) {
                ExpectPortMaps(FrontOf(s, p.bits), s, p.np_port, ep.port_type);
                ExpectNpPortMaps(s, p.np_port, FrontOf(s, p.bits), ep.port_type);
            }
            // Lists, counts and first ports of the subslot and its NP.
            EXPECT_EQ(ListOf(cvn_np_port_info_subslot(s)), ep.list);
            EXPECT_EQ(ListOf(cvn_np_port_info_from_subslot_ifsubinst(s, 0)), ep.list);
            EXPECT_EQ(ListOf(cvn_np_port_info_get()), ep.list);
            EXPECT_EQ(cvn_np_info_num_local_ports(s), Counted(ep.type) ? ep.ports.size() : 0u);
            EXPECT_EQ(cvn_np_info_num_local_ports(1 - s), 0u);
            Out out = Fresh();
            EXPECT_EQ(cvn_np_first_front_port_on_np(s, &out[0]), 0u);
            EXPECT_EQ(cvn_np_first_fplate_porttype_on_np(s, &out[2], &out[1]), 0u);
            EXPECT_EQ(out, (Out{FrontOf(s, 0), FrontOf(s, 0), ep.port_type, kSentinel}));
            EXPECT_EQ(cvn_np_first_front_port_on_np(1 - s, &out[3]), kInvalid);
            // Past the EP's last port there is no entry: nothing is mapped.
            const uint32_t past = FrontOf(s, static_cast<uint32_t>(ep.ports.size()));
            EXPECT_EQ(cvn_np_front_port_to_np_port(past), 0u);
            EXPECT_EQ(cvn_faceplate_porttype_to_np_port(ep.port_type, past), kInvalid);
            out = Fresh();
            EXPECT_EQ(cvn_np_front_port_mapping_info(past, &out[0], &out[1], &out[2], &out[3]), 0u);
            EXPECT_EQ(
                cvn_faceplate_porttype_mapping_info(ep.port_type, past, &out[0], &out[1], &out[2]),
                0u);
            EXPECT_EQ(out, Fresh());
        }
    }
}

TEST_F(Tolvar2Test, SplitSubslotInstancesMapTheirPortsByInstanceBits)
{
    std::vector<std::pair<const Instance *, const Instance *>> pairs;
    for (const Instance &i : Instances())
        pairs.emplace_back(&i, &i);
    pairs.emplace_back(&Instances()[0], &Instances()[2]); // 100GE beside 10GE
    pairs.emplace_back(&Instances()[2], &Instances()[1]); // 10GE beside 40GE
    for (uint32_t split : {kSplit, kSplitB}) {
        for (const auto &[i0, i1] : pairs) {
            for (uint32_t s = 0; s < 2; ++s) {
                SCOPED_TRACE(testing::Message()
                             << split << " subslot " << s << ": " << i0->name << " + " << i1->name);
                cvn_np_sim_reset();
                InstallSplit(s, split, i0->type, i1->type);
                const Instance *inst[2] = {i0, i1};
                for (uint32_t i = 0; i < 2; ++i) {
                    for (uint32_t p = 0; p < inst[i]->ports; ++p) {
                        const uint32_t front = FrontOf(s, 16 * i + p);
                        ExpectPortMaps(front, s, inst[i]->base[i] + p, inst[i]->port_type);
                        ExpectNpPortMaps(s, inst[i]->base[i] + p, front, inst[i]->port_type);
                    }
                    EXPECT_EQ(ListOf(cvn_np_port_info_from_subslot_ifsubinst(s, i)), inst[i]->list);
                }
                EXPECT_EQ(ListOf(cvn_np_port_info_subslot(s)), i0->list);
                EXPECT_EQ(cvn_np_info_num_local_ports(s), i0->counted + i1->counted);
                Out out = Fresh();
                EXPECT_EQ(cvn_np_first_front_port_on_np(s, &out[0]), 0u);
                EXPECT_EQ(cvn_np_first_fplate_porttype_on_np(s, &out[2], &out[1]), 0u);
                EXPECT_EQ(out, (Out{FrontOf(s, 0), FrontOf(s, 0), i0->port_type, kSentinel}));
            }
        }
    }
}

TEST_F(Tolvar2Test, NpPortsChooseTheInstanceOfASplitSubslot)
{
    InstallSplit(1, kSplit, k100G, k100G);
    ExpectNpPortMaps(1, 116, 0x40, kPt100);
    ExpectNpPortMaps(1, 117, 0x50, kPt100);
    // The range names the instance; the instance's own row is searched.
    InstallSplit(0, kSplitB, k10G, k40G);
    ExpectNpPortNotFound(0, 206, 0);
    ExpectNpPortMaps(0, 99, 0x10, kPt40);
    for (uint32_t np_port : {203u, 98u, 115u, 150u})
        ExpectNpPortUnmapped(0, np_port, kInvalid);
    // 575 encodes split but its NP ports are always looked for in instance 0.
    InstallSplit(0, kSplitOne, k100G, k10G);
    EXPECT_EQ(cvn_np_front_port_to_np_port(0x13), 207u);
    ExpectNpPortMaps(0, 116, 0x00, kPt100);
    ExpectNpPortNotFound(0, 207, 0);
    EXPECT_EQ(cvn_np_info_num_local_ports(0), 11u);
    // The instance the port names must answer.
    InstallSplit(0, kSplit, k10G, k10G);
    ASSERT_EQ(cvn_np_sim_fail_ifsubsys(0, 1, kFailStatus), 0);
    ExpectNpPortUnmapped(0, 204, kInvalid);
    ExpectNpPortMaps(0, 192, 0x00, kPt10);
    // An instance with nothing in it: answered 0, nothing written.
    InstallSplit(0, kSplit, kNone, k10G);
    ExpectNpPortUnmapped(0, 192, 0);
    Out out = Fresh();
    EXPECT_EQ(cvn_np_first_front_port_on_np(0, &out[0]), kInvalid);
    EXPECT_EQ(cvn_np_info_num_local_ports(0), 10u);
    EXPECT_EQ(cvn_np_info_to_fplate_porttype(2, 192, &out[0], &out[1]), kInvalid);
    EXPECT_EQ(out, Fresh());
}

TEST_F(Tolvar2Test, EmptySubslotsAnswerInvalidOrTheEmptyList)
{
    for (uint32_t s = 0; s < 2; ++s) {
        SCOPED_TRACE(testing::Message() << "subslot " << s);
        ExpectFrontPortUnanswered(FrontOf(s, 3), kInvalid);
        Out out = Fresh();
        EXPECT_EQ(cvn_np_first_front_port_on_np(s, &out[0]), kInvalid);
        EXPECT_EQ(cvn_np_first_fplate_porttype_on_np(s, &out[1], &out[2]), kInvalid);
        EXPECT_EQ(out, Fresh());
        EXPECT_EQ(cvn_np_port_info_subslot(s), tolvar_dummy_port_info);
        EXPECT_EQ(cvn_np_port_info_from_subslot_ifsubinst(s, 1), tolvar_dummy_port_info);
        EXPECT_EQ(cvn_np_info_num_local_ports(s), 0u);
        ExpectNpPortUnmapped(s, 192, 0);
    }
    EXPECT_EQ(cvn_np_port_info_get(), tolvar_dummy_port_info);
    Install(1, k8x10); // the first subslot that holds an EP gives the card's list
    EXPECT_EQ(ListOf(cvn_np_port_info_get()), (List{{8, kPt10}}));
}

TEST_F(Tolvar2Test, FailedPlatformQueriesReturnTheirStatusOrInvalid)
{
    Install(0, k20x10);
    InstallSplit(1, kSplit, k10G, k10G);
    cvn_np_sim_fail_all(kFailStatus);
    for (uint32_t front : {0x05u, 0x53u})
        ExpectFrontPortUnanswered(front, kFailStatus);
    for (uint32_t n = 0; n < 2; ++n) {
        Out out = Fresh();
        EXPECT_EQ(cvn_np_first_front_port_on_np(n, &out[0]), kFailStatus);
        EXPECT_EQ(cvn_np_first_fplate_porttype_on_np(n, &out[1], &out[2]), kFailStatus);
        EXPECT_EQ(out, Fresh());
        EXPECT_EQ(cvn_np_port_info_subslot(n), tolvar_dummy_port_info);
        EXPECT_EQ(cvn_np_port_info_from_subslot_ifsubinst(n, 0), tolvar_dummy_port_info);
        EXPECT_EQ(cvn_np_info_num_local_ports(n), 0u);
        ExpectNpPortUnmapped(n, 192, kInvalid);
    }
    EXPECT_EQ(cvn_np_port_info_get(), tolvar_dummy_port_info);
    // Only the subslot-level answer fails: slot 37 then asks the instance
    // that slot 34's CVN_NP_ERR_INVALID names, and reports that answer.
    cvn_np_sim_reset();
    ASSERT_EQ(cvn_np_sim_fail_ifsubsys(0, kAny, kFailStatus), 0);
    ASSERT_EQ(cvn_np_sim_set_ifsubsys(0, kInvalid, k10G), 0);
    Out out = Fresh();
    EXPECT_EQ(aux_cvn_np_front_port_to_ifsubsys(0x05, &out[0], &out[1], &out[2]), 0u);
    EXPECT_EQ(out, (Out{0, kInvalid, k10G, kSentinel}));
    EXPECT_EQ(cvn_np_info_num_local_ports(0), 0u);
}

TEST_F(Tolvar2Test, LocalPortCountsPerTypeAndNp)
{
    for (uint32_t s = 0; s < 2; ++s) {
        for (const Instance &i : Instances())
            EXPECT_EQ(aux_cvn_np_info_num_local_ports(s, s, i.type), i.counted);
        for (const Ep &ep : PlainEps())
            EXPECT_EQ(aux_cvn_np_info_num_local_ports(s, 1 - s, ep.type), ep.ports.size())
                << ep.name;
    }
    Install(0, kUnknownEp);
    EXPECT_EQ(cvn_np_info_num_local_ports(0), 0u);
    Install(1, k16x10);
    EXPECT_EQ(cvn_np_info_num_local_ports(1), 0u); // not counted, though it has 16
    InstallSplit(1, kSplit, k40GAlt, k100G);
    EXPECT_EQ(cvn_np_info_num_local_ports(1), 2u);
}

TEST_F(Tolvar2Test, AuxiliaryLookupsByType)
{
    // Slot 38: a split subslot code or an unknown one has no list of its own.
    for (uint32_t type : {kSplit, kSplitOne, kSplitB, kUnknownEp, kNone})
        EXPECT_EQ(aux_cvn_np_port_info_get(1, 0, type), tolvar_dummy_port_info) << type;
    for (const Instance &i : Instances())
        EXPECT_EQ(ListOf(aux_cvn_np_port_info_get(0, 1, i.type)), i.list);
    // Slot 42: the first entry of the type's row, in the given subslot.
    Out out = Fresh();
    EXPECT_EQ(aux_cvn_np_first_port_on_np(1, 7, k2x40, &out[0], &out[1], &out[2]), 0u);
    EXPECT_EQ(out, (Out{0x40, 0x40, kPt40, kSentinel}));
    out = Fresh();
    EXPECT_EQ(aux_cvn_np_first_port_on_np(1, 0, kSplit, &out[0], &out[1], &out[2]), kInvalid);
    EXPECT_EQ(aux_cvn_np_first_port_on_np(0, 0, kUnknownEp, &out[0], &out[1], &out[2]), kInvalid);
    EXPECT_EQ(out, Fresh());
    // Slot 41 reads the tables only; its outputs come back with the subslot
    // bits even when the NP port is not found.
    EXPECT_EQ(cvn_np_sim_ifsubsys_queries(), 0u);
    aux_cvn_np_info_to_mapping_info(1, 209, k20x10B, &out[0], &out[1], &out[2]);
    EXPECT_EQ(out, (Out{0x4F, 0x4F, kPt10, kSentinel}));
    out = Fresh();
    aux_cvn_np_info_to_mapping_info(1, 150, k2x10, &out[0], &out[1], &out[2]);
    EXPECT_EQ(out,
              (Out{0x40 | (kSentinel & 0x3F), 0x40 | (kSentinel & 0x3F), kSentinel, kSentinel}));
    EXPECT_EQ(cvn_np_sim_ifsubsys_queries(), 0u);
    // Slot 39 on ports its row does not have writes nothing.
    out = Fresh();
    aux_cvn_np_front_port_to_mapping_info(0, 0x20, k100G, &out[0], &out[1], &out[2], &out[3]);
    aux_cvn_np_front_port_to_mapping_info(0, 0x45, k1x40, &out[0], &out[1], &out[2], &out[3]);
    EXPECT_EQ(out, Fresh());
    // On a plain subslot an instance type's index takes the port as the
    // instance port of instance 0: 0x10002 port 12 is entry 12.
    Install(1, k2x10);
    aux_cvn_np_front_port_to_mapping_info(0, 0x4C, k10G, &out[0], &out[1], &out[2], &out[3]);
    EXPECT_EQ(out, (Out{1, 206, 0x52, kPt10}));
    ExpectNpPortSearch();
}

TEST_F(Tolvar2Test, ComplexesAreTheSubslotsNps)
{
    for (uint32_t c = 0; c < 2; ++c) {
        EXPECT_EQ(cvn_np_complex_to_subslot(static_cast<uint8_t>(c)), c);
        EXPECT_EQ(cvn_np_complex_to_np(static_cast<uint8_t>(c), 1), c);
        EXPECT_EQ(cvn_np_complex_to_np(static_cast<uint8_t>(c), 0), c);
        Out out = Fresh();
        EXPECT_EQ(cvn_np_complex_to_subslot_list(static_cast<uint8_t>(c), &out[0], &out[1]), 0u);
        EXPECT_EQ(out, (Out{1, c, kSentinel, kSentinel}));
        out = Fresh();
        EXPECT_EQ(cvn_np_complex_to_subslot_list(static_cast<uint8_t>(c), nullptr, &out[1]), 0u);
        EXPECT_EQ(cvn_np_subslot_to_np_list(static_cast<uint8_t>(c), &out[0], &out[2]), 0u);
        EXPECT_EQ(out, (Out{1, kSentinel, c, kSentinel}));
    }
    EXPECT_EQ(cvn_np_complex_to_subslot(static_cast<uint8_t>(0x101)), 1u);
    uint32_t n = kSentinel;
    EXPECT_EQ(cvn_np_subslot_to_np_list(0, &n, nullptr), kInvalid);
    EXPECT_EQ(cvn_np_subslot_to_np_list(0, nullptr, &n), kInvalid);
    EXPECT_EQ(n, kSentinel);
}

TEST_F(Tolvar2Test, FaceplatePortTypeMustBeTheRows)
{
    Install(0, k2x40);
    EXPECT_DEATH(cvn_faceplate_porttype_to_np(kPt10, 0x01),
                 Report("port_type == ep_data->port_type"));
    InstallSplit(1, kSplit, k100G, k10G);
    EXPECT_DEATH(cvn_faceplate_porttype_to_np(kPt10, 0x40),
                 Report("port_type == ep_data->port_type"));
    EXPECT_DEATH(cvn_faceplate_porttype_to_np(kPt100, 0x51),
                 Report("port_type == ep_data->port_type"));
    EXPECT_EQ(cvn_faceplate_porttype_to_np(kPt100, 0x40), 1u);
}

TEST_F(Tolvar2Test, EveryPreconditionEndsInItsReport)
{
    uint32_t a = 0, b = 0;
    EXPECT_DEATH(cvn_np_port_info_subslot(2), Report("subslot < tolvar_card_np_info->num_subslot"));
    EXPECT_DEATH(cvn_np_port_info_from_subslot_ifsubinst(2, 0),
                 Report("subslot < tolvar_card_np_info->num_subslot"));
    EXPECT_DEATH(aux_cvn_np_port_info_get(2, 0, k2x10),
                 Report("subslot_num < tolvar_card_np_info->num_subslot"));
    EXPECT_DEATH(aux_cvn_np_info_num_local_ports(2, 0, k2x10),
                 Report("subslot_num < tolvar_card_np_info->num_subslot"));
    EXPECT_DEATH(aux_cvn_np_info_num_local_ports(0, 2, k2x10),
                 Report("np_num < tolvar_card_np_info->num_complex"));
    EXPECT_DEATH(aux_cvn_np_info_to_mapping_info(2, 192, k2x10, &a, &b, nullptr),
                 Report("np_num < tolvar_card_np_info->num_complex"));
    EXPECT_DEATH(cvn_np_info_num_local_ports(2), Report("np_id < cvn_np_how_many()"));
    EXPECT_DEATH(cvn_np_first_front_port_on_np(2, &a), Report("np_id < cvn_np_how_many()"));
    EXPECT_DEATH(cvn_np_first_front_port_on_np(0, nullptr), Report("phys_front_port != NULL"));
    EXPECT_DEATH(cvn_np_first_fplate_porttype_on_np(0, nullptr, &b), Report("port_type != NULL"));
    EXPECT_DEATH(cvn_np_first_fplate_porttype_on_np(0, &a, nullptr), Report("fplate_port != NULL"));
    EXPECT_DEATH(cvn_np_first_fplate_porttype_on_np(2, &a, &b),
                 Report("np_id < cvn_np_how_many()"));
    EXPECT_DEATH(cvn_np_complex_to_subslot(2), Report("np_complex < cvn_np_how_many()"));
    EXPECT_DEATH(cvn_np_complex_to_subslot_list(2, &a, &b),
                 Report("np_complex < cvn_np_how_many()"));
    EXPECT_DEATH(cvn_np_complex_to_np(2, 0), Report("np_complex < cvn_np_how_many()"));
    for (uint32_t type : {k2x10, k100G, k10G})
        EXPECT_DEATH(
            aux_cvn_np_front_port_to_mapping_info(0, 0x81, type, &a, nullptr, nullptr, nullptr),
            Report("subslot < CVN_NP_TOTAL_SUBSLOT_TOLVAR"));
    EXPECT_DEATH(aux_cvn_np_first_port_on_np(2, 0, k2x10, &a, nullptr, nullptr),
                 Report("subslot < CVN_NP_TOTAL_SUBSLOT_TOLVAR"));
    Install(3, k2x10);
    EXPECT_DEATH(cvn_faceplate_porttype_to_np(kPt10, 0xC1),
                 Report("subslot < CVN_NP_TOTAL_SUBSLOT_TOLVAR"));
    for (uint32_t type : {kSplit, kUnknownEp, kNone, 0x10004u})
        EXPECT_DEATH(
            aux_cvn_np_front_port_to_mapping_info(0, 0x01, type, &a, nullptr, nullptr, nullptr),
            Report("0"));
    EXPECT_DEATH(aux_cvn_np_info_num_local_ports(0, 0, kSplit), Report("0"));
    EXPECT_DEATH(aux_cvn_np_info_to_mapping_info(0, 192, kUnknownEp, &a, nullptr, nullptr),
                 Report("0"));
    InstallSplit(0, kSplit, kUnknownEp, k10G);
    EXPECT_DEATH(cvn_faceplate_porttype_to_np(kPt10, 0x01), Report("0"));
    ExpectNpPortMaps(0, 204, 0x10, kPt10); // the other instance still maps
    EXPECT_DEATH(cvn_np_info_to_front_port(0, 192, &a), Report("0"));
}

} // namespace
