// The tolvar families (2-slice: one NP per subslot; 1-slice: one NP serving both bays): their
// tables field by field and every operation over every EP type and port, from the rows below.
#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <vector>

#include "test_support.h"

namespace {

using namespace cvn_test; // kSentinel, kInvalid, kFailStatus, LibTest
using V = std::vector<uint32_t>;
using P = std::vector<const void *>;
constexpr uint32_t kAny = CVN_NP_IFSUB_ANY, kNone = CVN_NP_IFSUB_TYPE_NONE, X = 99;
constexpr uint32_t k100 = 0x10000, k40 = 0x10001, k10 = 0x10002, k40b = 0x10003;
const uint32_t S = kSentinel, iv = kInvalid;

// compose(subslot, v): subslot in bits 7..6, port bits 5..0.
uint32_t C(uint32_t s, uint32_t v) { return ((s << 6) & 0xFF) | (v & 0x3F); }

// One EP row.  Entry k: NP-local port lo + step*k below `split`, then hi + (k - split); port
// bits k below `fsplit`, then 16 + (k - fsplit) (instance 1).  `shares`: whose entries it uses.
// clang-format off
struct Row { uint32_t type, base, span, n, ptype, count, lo, step, split, hi, fsplit; int shares; };
uint32_t NpPort(Row r, uint32_t k) { return k < r.split ? r.lo + r.step * k : r.hi + k - r.split; }
uint32_t Bits(const Row &r, uint32_t k) { return k < r.fsplit ? k : 16 + k - r.fsplit; }
bool PerInstance(uint32_t t) { return t >= k100 && t <= k40b; }
uint32_t InstancePorts(uint32_t t) { return t == k40 ? 2 : t == k10 ? 10 : 1; } // port_cage_*
//  type  base span  n pt list  lo step split hi fsplit shares
const std::vector<Row> k2SliceRows = {
    {566,  192, 201,  2, 1,  2, 192, 2, X,  0,   X,  -1},
    {567,  192, 201,  4, 1,  4, 192, 2, X,  0,   X,  -1},
    {568,  192, 201,  8, 1,  8, 192, 1, X,  0,   X,  -1},
    {573,  192, 201, 16, 1, 16, 192, 1, 8,  204, X,  -1},
    {576,  192, 201, 20, 1, 20, 192, 1, 10, 204, X,  -1},
    {578,  192, 201, 20, 1, 20, 192, 1, 10, 204, X,   4},
    {570,  96,  97,   2, 3,  2, 96,  1, X,  0,   X,  -1},
    {571,  96,  97,   1, 3,  1, 96,  1, X,  0,   X,  -1},
    {565,  192, 201, 20, 0, 20, 16,  1, 10, 28,  X,  -1},
    {k100, 116, 2,    2, 4,  2, 116, 1, 1,  117, 1,  -1},
    {k10,  192, 20,  20, 1, 10, 192, 1, 10, 204, 10, -1},
    {k40,  96,  4,    4, 3,  2, 96,  1, 2,  99,  2,  -1},
    {k40b, 96,  4,    4, 3,  2, 96,  1, 2,  99,  2,  11}};
const std::vector<Row> kBay0Rows = {
    {566,  192, 201,  2, 1,  2, 192, 2, X,  0,   X,  -1},
    {567,  192, 213,  4, 1,  4, 192, 2, X,  0,   X,  -1},
    {568,  192, 213,  8, 1,  8, 192, 1, X,  0,   X,  -1},
    {570,  96,  100,  2, 3,  2, 96,  1, X,  0,   X,  -1},
    {571,  96,  100,  1, 3,  1, 96,  1, X,  0,   X,  -1},
    {565,  192, 213, 20, 0, 20, 16,  1, 10, 28,  X,  -1},
    {573,  192, 213, 16, 1, 16, 192, 1, 8,  204, X,  -1},
    {576,  192, 201, 20, 1, 20, 192, 1, 10, 204, X,  -1},
    {578,  192, 201, 20, 1, 20, 192, 1, 10, 204, X,   7},
    {k100, 116, 117,  2, 4,  2, 116, 1, 1,  117, 1,  -1},
    {k10,  192, 213, 20, 1, 10, 192, 1, 10, 204, 10, -1},
    {k40,  96,  100,  4, 3,  2, 96,  1, 2,  99,  2,  -1}};
const std::vector<Row> kBay1Rows = {
    {566,  192, 213,  2, 1,  2, 204, 2, X,  0,   X,  -1},
    {567,  192, 213,  4, 1,  4, 204, 2, X,  0,   X,  -1},
    {568,  192, 213,  8, 1,  8, 204, 1, X,  0,   X,  -1},
    {570,  96,  100,  2, 3,  2, 99,  1, X,  0,   X,  -1},
    {571,  96,  100,  1, 3,  1, 99,  1, X,  0,   X,  -1},
    {565,  192, 213, 20, 0, 20, 128, 1, 10, 140, X,  -1},
    {k100, 116, 117,  1, 4,  1, 117, 1, X,  0,   X,  -1},
    {k10,  204, 213, 10, 1, 10, 204, 1, X,  0,   X,  -1},
    {k40,  99,  100,  2, 3,  2, 99,  1, X,  0,   X,  -1}};
struct Fam { // a card family: its card types, records, tables (by subslot) and rows
    const char *name; V cards; const np_info *info; std::array<uint16_t, 23> info_vals;
    const np_info *const *info_ptr; const cvn_np_ep_data *const *types_ptr;
    std::array<const cvn_np_ep_data *, 2> tables; std::array<size_t, 2> sizes;
    std::array<const std::vector<Row> *, 2> rows; card_version *ver; subslot_info *ssi;
    const port_info *dummy; cvn_np_api *api;
    bool one_np; // 1-slice: every port is on NP 0
    uint32_t Np(uint32_t s) const { return one_np ? 0 : s; }
};
const Fam k2Slice = {"tolvar_2slice",
    {0x3D0296, 0x3D0297, 0x3D0298, 0x3D0299, 0x3D029B, 0x3D029C, 0x3D029D, 0x3D029E, 0x3D029F, 0x3D02D8},
    &np_info_2slice_tolvar, {1, 0, 2, 2, 1, 0, 2, 5, 99, 9216, 2, 4, 20, 2, 0, 2, 4, 20, 1, 2, 1, 10, 13},
    &tolvar_card_np_info, &cvn_np_lib_info_types,
    {cvn_np_lib_2slice_tv_info_types, cvn_np_lib_2slice_tv_info_types},
    {std::size(cvn_np_lib_2slice_tv_info_types), std::size(cvn_np_lib_2slice_tv_info_types)},
    {&k2SliceRows, &k2SliceRows}, &tolvar_card_version, &tolvar_card_subslot_info,
    tolvar_dummy_port_info, &cvn_np_api_2slice_tolvar, false};
const Fam k1Slice = {"tolvar_1slice",
    {0x3D028C, 0x3D028D, 0x3D028E, 0x3D028F, 0x3D0291, 0x3D0292, 0x3D0293, 0x3D0294, 0x3D0295, 0x3D02D9},
    &np_info_1slice_tv, {1, 0, 1, 1, 1, 0, 2, 5, 99, 9216, 2, 4, 20, 2, 0, 2, 4, 20, 1, 2, 1, 10, 12},
    &tv_1slice_card_np_info, &cvn_1slice_np_lib_info_types,
    {cvn_np_lib_tv_1slice_bay0_ep_info_types, cvn_np_lib_tv_1slice_bay1_ep_info_types},
    {std::size(cvn_np_lib_tv_1slice_bay0_ep_info_types), std::size(cvn_np_lib_tv_1slice_bay1_ep_info_types)},
    {&kBay0Rows, &kBay1Rows}, &tv_1slice_card_version, &tv_1slice_card_subslot_info,
    tv_1slice_dummy_port_info, &cvn_np_api_1slice_tolvar, true};
// Front-port encoding on subslot 1 by its subslot-level type (0: nothing scripted): slot 30
// (1, 0x25, 0x23), slots 34 and 35 of 0x53, slot 36 (x, 1, 0x25, 0x23).
const std::array<uint32_t, 5> kEncoding[] = {
    {574, 0x53, 1, 3, 0x53},    {575, 0x53, 1, 3, 0x53},    {577, 0x53, 1, 3, 0x53},
    {566, 0x63, 0, 0x13, 0x65}, {573, 0x63, 0, 0x13, 0x65}, {565, 0x63, 0, 0x13, 0x65},
    {578, 0x63, 0, 0x13, 0x65}, {569, 0x63, 0, 0x13, 0},    {572, 0x63, 0, 0x13, 0},
    {k10, 0x63, 0, 0x13, 0},    {0x1023E, 0x63, 0, 0x13, 0}, {0, 0x63, iv, 0x13, iv},
    {1 /* the query fails */, 0x63, iv, iv, iv}};
// Slots 37 and 45 of a front port: subslot, instance, type, slot 45's instance.
const std::array<uint32_t, 5> kFronts[] = {{0x53, 1, 1, k10, 1}, {0x43, 1, 0, k40, 0},
    {0x13, 0, 0, 567, 0x13}, {0x93, 2, iv, k100, 1}, {0xD3, 3, iv, kNone, 0x13}};
// Slot 44 over three entries: NP port, count, then front, faceplate and port type found.
const std::array<uint32_t, 5> kSearch[] = {{201, 3, 5, 6, 3}, {200, 1, 3, 4, 1}, {201, 1, S, S, S},
    {200, 0, S, S, S}, {202, 3, S, S, S}, {0x100C8, 3, S, S, S}};
// 2-slice, subslot 1 split: its type, NP port, then slot 14's result and front, slot 15's type.
const std::array<uint32_t, 5> kInstanceByNpPort[] = {{574, 204, 0, 0x50, 1}, {577, 116, 0, 0x40, 4},
    {574, 117, 0, C(1, S), S}, {575, 204, 0, C(1, S), S}, {575, 116, 0, 0x40, 4},
    {574, 202, iv, S, S}, {574, 256, iv, S, S}, {574, 203, iv, S, S}, {577, 98, iv, S, S}, {574, 0x100CC, iv, S, S}};
// 1-slice, bay 1 holding 566: bay 0's type and instance 0's, the front port of NP port 204.
const std::array<uint32_t, 3> kNpPort204[] = {{574, k100, 0x10}, {577, k100, 0x10},
    {576, 576, 0x0A}, {578, 578, 0x0A}, {575, k100, 0x40}, {566, 566, 0x40}, {573, 573, 0x40}};
// clang-format on

// A port list: {count, type} then the end record, or only the end record.
V List(const port_info *l)
{
    return l->port_type == CVN_NP_PORT_TYPE_END
               ? V{l->num_ports, l->port_type}
               : V{l->num_ports, l->port_type, l[1].num_ports, l[1].port_type};
}
const V kEmptyList = {0, CVN_NP_PORT_TYPE_END};

// A call's results, then its outputs.
V With(V r, const uint32_t *o, int n) { return r.insert(r.end(), o, o + n), r; }
// Results of slots 12, 11, 8, 9, 10, then the outputs of 12, 11 and 39 (asked with `type`).
V Front(uint32_t front, uint32_t type)
{
    uint32_t o[10] = {S, S, S, S, S, S, S, S, S, S};
    aux_cvn_np_front_port_to_mapping_info(7, front, type, o + 6, o + 7, o + 8, o + 9);
    return With({cvn_np_front_port_mapping_info(front, o, o + 1, o + 2, o + 3),
                 cvn_np_front_port_to_face_plate_port(front, o + 4, o + 5),
                 cvn_np_front_port_to_np(front), cvn_np_front_port_to_np_port(front),
                 cvn_np_front_port_to_port_type(front)},
                o, 10);
}
// Results of slots 22, 19, 20, 21, 43 for a faceplate port, then slot 22's and 43's outputs.
V Face(uint32_t type, uint32_t fplate)
{
    uint32_t o[6] = {S, S, S, S, S, S};
    return With({cvn_faceplate_porttype_mapping_info(type, fplate, o, o + 1, o + 2),
                 cvn_faceplate_porttype_to_np(type, fplate),
                 cvn_faceplate_porttype_to_np_port(type, fplate),
                 cvn_faceplate_porttype_to_phys_port(type, fplate),
                 aux_cvn_faceplate_to_mapping_info(7, fplate, type, o + 3, o + 4, o + 5)},
                o, 6);
}
// Results of slots 14 and 15, then their outputs and slot 41's (asked with `type` if not 0).
V Back(uint32_t np, uint32_t np_port, uint32_t type = 0)
{
    uint32_t o[6] = {S, S, S, S, S, S};
    if (type != 0)
        aux_cvn_np_info_to_mapping_info(np, np_port, type, o + 3, o + 4, o + 5);
    return With({cvn_np_info_to_front_port(np, np_port, o),
                 cvn_np_info_to_fplate_porttype(np, np_port, o + 1, o + 2)},
                o, type != 0 ? 6 : 3);
}

class Tolvar : public cvn_test::LibTest, public ::testing::WithParamInterface<const Fam *> {
  protected:
    Tolvar() : LibTest(GetParam()->cards[0]), f(*GetParam()) {}
    const Fam &f;
    // Plain EP t in subslot s (as subslot and instance 0), or a split one of two instances t.
    void Install(uint32_t s, uint32_t t)
    {
        const bool split = PerInstance(t);
        Plug(s, kAny, split ? 574 + 3 * s : t), Plug(s, 0, t), Plug(s, 1, split ? t : kNone);
    }
};

TEST_P(Tolvar, CardTypesTablesAndRunTimeRecords)
{
    for (uint32_t ct : f.cards) {
        EXPECT_STREQ(cvn_np_card_family(ct), f.name) << std::hex << ct;
        ASSERT_EQ(cvn_np_lib_init(ct), 0u);
        EXPECT_EQ(card_np_api, f.api) << std::hex << ct;
    }
    std::array<uint16_t, 23> info{}; // np_info: 23 u16 fields
    std::memcpy(info.data(), f.info, sizeof info);
    EXPECT_EQ(info, f.info_vals);
    const uint32_t spare = f.one_np ? 1 : 2;
    for (int bay = 0; bay < 2; ++bay) {
        ASSERT_EQ(f.sizes[bay], f.rows[bay]->size());
        for (size_t i = 0; i < f.rows[bay]->size(); ++i) {
            const Row &r = (*f.rows[bay])[i];
            const cvn_np_ep_data &d = f.tables[bay][i];
            SCOPED_TRACE(std::to_string(bay) + " row " + std::to_string(i));
            EXPECT_EQ(V({d.ep_type, d.np_per_subslot, d.spare_a, d.spare_b, d.np_port_base,
                         d.np_port_span, d.num_ports, d.port_type}),
                      V({r.type, 1, spare, spare, r.base, r.span, r.n, r.ptype}));
            EXPECT_EQ(List(d.port_info_list), V({r.count, r.ptype, 0, CVN_NP_PORT_TYPE_END}));
            EXPECT_EQ(d.first_entry, d.entries[0]);
            const cvn_np_ep_data &sh = f.tables[bay][r.shares >= 0 ? r.shares : i];
            EXPECT_EQ(P({d.entries, d.port_info_list}), P({sh.entries, sh.port_info_list}));
            for (uint32_t k = 0; k < r.n; ++k) {
                const port_mapping_entry *e = d.entries[k];
                EXPECT_EQ(V({e->phys_front_port, e->np, e->np_port, e->fplate_port, e->port_type}),
                          V({Bits(r, k), 0, NpPort(r, k), Bits(r, k), r.ptype}))
                    << "entry " << k;
            }
        }
    }
    *f.ssi = {9, 7, 5, 4}, *f.ver = {1, 1}; // overwritten by the init
    *const_cast<const np_info **>(f.info_ptr) = nullptr;
    *const_cast<const cvn_np_ep_data **>(f.types_ptr) = nullptr;
    ASSERT_EQ(cvn_np_lib_init(f.cards[0]), 0u);
    EXPECT_EQ(P({*f.info_ptr, *f.types_ptr, cvn_np_version_get(), cvn_np_subslot_info_get(),
                 card_np_api}),
              P({f.info, f.tables[0], f.ver, f.ssi, f.api}));
    const subslot_info &ss = *f.ssi;
    EXPECT_EQ(V({f.ver->ver_major, f.ver->ver_minor, ss.num_of_subslots, ss.max_ports_per_subslot,
                 ss.max_of_ifsubsys_per_subslot, ss.spare}),
              V({5, 99, 2, 20, 2, 0}));
    EXPECT_EQ(List(f.dummy), kEmptyList);
    f.ssi->max_ports_per_subslot = 30; // the largest of the old value and the rows
    ASSERT_EQ(cvn_np_lib_init(f.cards[0]), 0u);
    EXPECT_EQ(f.ssi->max_ports_per_subslot, 30u);
    const uint32_t nps = f.one_np ? 1 : 2;
    EXPECT_EQ(V({cvn_max_mtu(), cvn_np_how_many(), cvn_np_chip_how_many(),
                 cvn_np_set_if_subsys_type(1, 566), cvn_np_to_cpu_port_map(1),
                 cvn_np_sim_ifsubsys_queries()}),
              V({9216, nps, nps, 0, 3, 0}));
}

// Every EP type of each subslot's rows, every port, through every operation that maps it.
TEST_P(Tolvar, EveryEpTypeAndPortMapsThroughEveryOperation)
{
    for (uint32_t s = 0; s < 2; ++s) {
        for (const Row &r : *f.rows[s]) {
            SCOPED_TRACE("subslot " + std::to_string(s) + " type " + std::to_string(r.type));
            cvn_np_sim_reset();
            Install(s, r.type);
            const uint32_t t = r.type, np = f.Np(s), z = C(s, 0), pt = r.ptype;
            const V list = {r.count, pt, 0, CVN_NP_PORT_TYPE_END};
            uint32_t o[7], g = 0xFFFF;
            for (const port_info *l :
                 {cvn_np_port_info_subslot(uint16_t(s)), cvn_np_port_info_get(),
                  cvn_np_port_info_from_subslot_ifsubinst(uint16_t(s), 0),
                  aux_cvn_np_port_info_get(s, 0, t)})
                EXPECT_EQ(List(l), list);
            if (t == 565) { // NP-local port 26 (138 in bay 1) is in 565's range but on no entry
                EXPECT_EQ(V({cvn_np_info_to_front_port(np, s && f.one_np ? 138 : 26, &g), g}),
                          V({0, C(s, 0x3F)}));
            }
            // A plain row adds its ports (but 573); a split subslot its two instances'.
            const uint32_t count = PerInstance(t) ? 2 * InstancePorts(t) : t == 573 ? 0 : r.n;
            std::fill(o, o + 7, S);
            EXPECT_EQ(V({cvn_np_info_num_local_ports(np), aux_cvn_np_info_num_local_ports(s, np, t),
                         cvn_np_first_front_port_on_np(np, o),
                         cvn_np_first_fplate_porttype_on_np(np, o + 2, o + 1),
                         aux_cvn_np_first_port_on_np(s, 0, t, o + 3, o + 4, o + 5), o[0], o[1],
                         o[2], o[3], o[4], o[5], cvn_np_first_phys_port_on_np(s, o + 6), o[6]}),
                      V({count, PerInstance(t) ? InstancePorts(t) : r.n, 0, 0, 0, z, z, pt, z, z,
                         pt, f.one_np ? 0 : iv, f.one_np ? z : S}));
            for (uint32_t k = 0; k < r.n; ++k) {
                const uint32_t front = C(s, Bits(r, k)), npp = NpPort(r, k);
                EXPECT_EQ(Front(front, t), V({0, 0, np, npp, pt, np, npp, front, pt, front, pt, np,
                                              npp, front, pt}));
                EXPECT_EQ(Face(pt, front),
                          V({0, np, npp, front, 0, np, npp, front, np, npp, front}));
                // 1-slice: NP ports 204.. of bay 0 belong to bay 1 unless bay 0
                // is split, 576 or 578; bay 1 is empty here.
                if (f.one_np && t == 573 && npp >= 204)
                    EXPECT_EQ(Back(np, npp), V({0, 0, S, S, S}));
                else
                    EXPECT_EQ(Back(np, npp, t), V({0, 0, front, front, pt, front, front, pt}));
            }
        }
    }
}

// The encoding of a front port on subslot 1 by what the subslot reports (0: nothing scripted),
// slots 37 and 45, which ask (subslot, slot 34's instance), even for an empty subslot; slot
// 44, the first entry with the NP port among the first `count`; complexes and subslots.
TEST_P(Tolvar, EncodingInterfaceSubsystemSearchAndComplexes)
{
    for (auto [type, s30, s34, s35, s36] : kEncoding) {
        cvn_np_sim_reset();
        Plug(1, kAny, type != 0 ? type : kNone);
        for (uint32_t front : {0x53u, 0x153u})
            EXPECT_EQ(V({cvn_np_lib_set_subslot_ifsubinst_ifsubinst_port(1, 0x25, 0x23),
                         cvn_np_lib_get_ifsubinst(front), cvn_np_lib_get_ifsubinst_port(front),
                         cvn_np_lib_get_phys_port_tuple45(0x77, 1, 0x25, 0x23)}),
                      V({s30, s34, s35, s36}))
                << type << " front " << front;
    }
    cvn_np_sim_reset();
    EXPECT_EQ(V({cvn_np_lib_set_subslot_phy_port(3, 70), cvn_np_lib_set_subslot_phy_port(1, 0x47),
                 cvn_np_lib_get_subslot(0x1C5), cvn_np_lib_get_subslot(0x45),
                 cvn_np_lib_get_subslot_port(0x1C5), cvn_np_lib_get_port(0x1C5),
                 cvn_np_sim_ifsubsys_queries()}), // none of these asks the platform
              V({0xC6, 0x47, 3, 1, 0xC5, 5, 0}));
    Plug(1, kAny, 574), Plug(1, 0, k40), Plug(1, 1, k10), Plug(0, kAny, 566), Plug(0, 0, 567);
    Plug(2, kInvalid, k100);
    uint32_t o[4];
    for (auto [front, sub, inst, type, inst45] : kFronts) {
        std::fill(o, o + 4, S);
        EXPECT_EQ(V({aux_cvn_np_front_port_to_ifsubsys(front, o, o + 1, o + 2),
                     aux_cvn_np_front_port_to_ifsubsys(front, nullptr, nullptr, nullptr),
                     aux_cvn_np_front_port_to_ifsubinst(front, o + 3), o[0], o[1], o[2], o[3]}),
                  V({0, 0, 0, sub, inst, type, inst45}))
            << front;
    }
    std::fill(o, o + 4, S);
    Plug(1, 1, kFails);
    EXPECT_EQ(With({aux_cvn_np_front_port_to_ifsubinst(0x53, nullptr),
                    aux_cvn_np_front_port_to_ifsubsys(0x53, o, o + 1, o + 2),
                    aux_cvn_np_front_port_to_ifsubinst(0x53, o + 3)},
                   o, 4),
              V({22, kFailStatus, kFailStatus, S, S, S, S}));
    const port_mapping_entry e[] = {{3, 0, 200, 4, 1}, {5, 0, 201, 6, 3}, {7, 0, 201, 8, 4}};
    const port_mapping_entry *const ptrs[] = {&e[0], &e[1], &e[2]};
    for (auto [np_port, count, front, fplate, type] : kSearch) {
        std::fill(o, o + 3, S);
        aux_np_port_to_mapping_info(ptrs, np_port, count, o, o + 1, o + 2);
        EXPECT_EQ(V(o, o + 3), V({front, fplate, type})) << np_port << "/" << count;
    }
    for (uint32_t cx = 0; cx < (f.one_np ? 1u : 2u); ++cx) {
        const uint8_t c8 = uint8_t(cx);
        std::fill(o, o + 4, S);
        EXPECT_EQ(With({cvn_np_complex_to_subslot(c8), cvn_np_complex_to_np(c8, 1),
                        cvn_np_complex_to_np(c8, 0), cvn_np_complex_to_subslot_list(c8, o, o + 1),
                        cvn_np_complex_to_subslot_list(c8, nullptr, o + 3)},
                       o, 4),
                  f.one_np ? V({cx, cx, cx, 0, 0, 2, 0, 1, S})
                           : V({cx, cx, cx, 0, 0, 1, cx, S, S}));
    }
    for (uint8_t s = 0; s < 2; ++s) {
        std::fill(o, o + 2, S);
        EXPECT_EQ(V({cvn_np_subslot_to_np_list(s, nullptr, o + 1),
                     cvn_np_subslot_to_np_list(s, o, nullptr), o[0], o[1],
                     cvn_np_subslot_to_np_list(s, o, o + 1), o[0], o[1]}),
                  V({iv, iv, S, S, 0, 1, f.Np(s)}));
    }
}

// Nothing installed, or one query failing: soft rejections, the status passed on, outputs kept.
TEST_P(Tolvar, NothingInstalledFailingQueriesAndSoftRejections)
{
    using A = std::array<uint32_t, 2>; // what subslot level and instance 0 answer
    for (uint32_t s = 0; s < 2; ++s) {
        for (auto [any, inst0] : {A{kNone, kNone}, A{566, kFails}, A{kFails, 566}}) {
            SCOPED_TRACE("subslot " + std::to_string(s) + " answers " + std::to_string(any));
            cvn_np_sim_reset();
            Plug(s, kAny, any), Plug(s, 0, inst0);
            const bool inst_fails = inst0 == kFails, empty = any == kNone;
            const uint32_t front = C(s, 1), np = f.Np(s), npp = f.one_np && s == 1 ? 206 : 194;
            const uint32_t st = inst_fails ? kFailStatus : iv, e = empty ? 0 : iv;
            EXPECT_EQ(Front(front, 566),
                      V({st, st, iv, iv, iv, S, S, S, S, S, S, np, npp, front, 1}));
            EXPECT_EQ(Face(1, front), V({0, st, st, st, st, S, S, S, S, S, S}));
            EXPECT_EQ(Back(np, npp), V({e, e, S, S, S}));
            // 1-slice: a first-port walk moves on from bay 0 to the empty bay 1.
            uint32_t o[3] = {S, S, S};
            EXPECT_EQ(With({cvn_np_info_num_local_ports(np), cvn_np_first_front_port_on_np(np, o),
                            cvn_np_first_fplate_porttype_on_np(np, o + 2, o + 1),
                            cvn_np_first_phys_port_on_np(s, o),
                            cvn_np_lib_get_phys_port_tuple45(0, uint16_t(s), 1, 2)},
                           o, 3),
                      V({0, f.one_np ? iv : st, f.one_np && s == 0 ? iv : st, iv,
                         inst_fails ? front : iv, S, S, S}));
            EXPECT_EQ(List(cvn_np_port_info_from_subslot_ifsubinst(uint16_t(s), 0)),
                      any == kFails ? V({2, 1, 0, CVN_NP_PORT_TYPE_END}) : kEmptyList);
            EXPECT_EQ(P({cvn_np_port_info_subslot(uint16_t(s)), cvn_np_port_info_get()}),
                      P(2, f.dummy));
        }
    }
    Install(0, 566), Install(1, 566);
    for (uint32_t bad_np : {f.one_np ? 1u : 2u, 0x100u})
        EXPECT_EQ(Back(bad_np, 194), V({iv, iv, S, S, S})) << bad_np;
    uint32_t o[3] = {S, S, S};
    EXPECT_EQ(With({aux_cvn_np_first_port_on_np(0, 0, 574, o, o + 1, o + 2),
                    aux_cvn_np_first_port_on_np(0, 0, 0x10004, o, o + 1, o + 2)},
                   o, 3),
              V({iv, iv, S, S, S}));
    for (uint32_t t : {574u, 575u, 577u, 569u, 0x10236u})
        EXPECT_EQ(aux_cvn_np_port_info_get(0, 0, t), f.dummy) << t;
}

// Each family's own answers.  2-slice: the NP port picks the instance of a 574 or 577
// subslot only; 575 always answers with instance 0 (here 100GE; instance 1 is 10GE).
// 1-slice: NP-local port 204 belongs to bay 0 when bay 0 is split (instance 1), 576 or 578,
// else to bay 1 (here 566, where 204 is port 0); bay 1 has no 573, 576 or 578 row.
TEST_P(Tolvar, NamedDifferences)
{
    for (auto [any, np_port, status, front, type] : kInstanceByNpPort) {
        cvn_np_sim_reset();
        Plug(1, kAny, any), Plug(1, 0, k100), Plug(1, 1, k10);
        EXPECT_EQ(Back(1, np_port),
                  f.one_np ? V({iv, iv, S, S, S}) : V({status, status, front, front, type}))
            << any << "/" << np_port; // the 1-slice card has no NP 1
    }
    if (!f.one_np)
        return; // what follows is the 1-slice card's
    for (auto [bay0, inst0, front] : kNpPort204) {
        cvn_np_sim_reset();
        Plug(0, kAny, bay0), Plug(0, 0, inst0), Plug(0, 1, k10);
        Plug(1, kAny, 566), Plug(1, 0, 566);
        EXPECT_EQ(Back(0, 204), V({0, 0, front, front, 1})) << bay0;
    }
    for (uint32_t np_port : {150, 115}) // in neither bay's ranges
        EXPECT_EQ(Back(0, np_port), V({iv, iv, S, S, S})) << np_port;
    Plug(0, kAny, 576), Plug(0, 0, 576);
    EXPECT_EQ(cvn_np_info_num_local_ports(0), 22u);
    for (uint32_t t : {573u, 576u, 578u})
        EXPECT_EQ(aux_cvn_np_port_info_get(1, 0, t), nullptr) << t;
    EXPECT_EQ(aux_cvn_np_port_info_get(0, 0, k40b), tv_1slice_dummy_port_info);
    Plug(1, kAny, 573), Plug(1, 0, 573); // slots 8 to 10 answer 0, slot 11 its zeroed locals
    EXPECT_EQ(Front(0x41, 573), V({0, 0, 0, 0, 0, S, S, S, S, 0, 0, S, S, S, S}));
    EXPECT_EQ(cvn_np_info_num_local_ports(0), 20u); // bay 1's 573 adds nothing
    Plug(1, kAny, kFails);                          // either bay unanswered: no answer
    EXPECT_EQ(Back(0, 192), V({iv, iv, S, S, S}));
}

// Slots 14 and 37 follow a replaced slot 44 or 34 of the selected table (braced lists are
// evaluated in order: the call, then what it wrote).
TEST_P(Tolvar, ReplacedStepsAreObeyed)
{
    Install(0, 566), Install(1, 566);
    uint32_t front = S, sub = S, place = S, type = S;
    EXPECT_EQ(V({cvn_np_info_to_front_port(0, 194, &front), front}), V({0, 1}));
    Swap(
        f.api->aux_np_port_to_mapping_info,
        +[](const port_mapping_entry *const *, uint32_t, uint32_t, uint32_t *to, uint32_t *,
            uint32_t *) { *to = 7; },
        [&] {
            EXPECT_EQ(V({cvn_np_info_to_front_port(0, 194, &front), front}), V({0, 7}));
        });
    Swap(
        f.api->cvn_np_lib_get_ifsubinst, +[](uint32_t) { return 1u; },
        [&] {
            EXPECT_EQ(
                V({aux_cvn_np_front_port_to_ifsubsys(1, &sub, &place, &type), sub, place, type}),
                V({0, 0, 1, kNone}));
        });
    if (f.one_np)
        return;
    np_info three = np_info_2slice_tolvar; // slot 41 on NP 2 of a replaced record: a search
    three.num_complex = 3;
    Swap(tolvar_card_np_info, static_cast<const np_info *>(&three), [&] {
        aux_cvn_np_info_to_mapping_info(2, 194, 566, &front, nullptr, nullptr);
        EXPECT_EQ(front, C(2, 1));
    });
    cvn_np_ep_data rows[13]; // the rows searched are the current record's: a copy...
    std::copy_n(cvn_np_lib_2slice_tv_info_types, 13, rows);
    for (cvn_np_ep_data &r : rows)
        r.port_info_list = r.ep_type == 566 ? tolvar_dummy_port_info : r.port_info_list;
    Swap(cvn_np_lib_info_types, static_cast<const cvn_np_ep_data *>(rows),
         [] { EXPECT_EQ(aux_cvn_np_port_info_get(0, 0, 566), tolvar_dummy_port_info); });
    three.num_info_types = 0; // ...and as many as the current np_info says
    Swap(tolvar_card_np_info, static_cast<const np_info *>(&three), [&] {
        EXPECT_EQ(aux_cvn_np_port_info_get(0, 0, 566), nullptr);
        EXPECT_EQ(V({cvn_np_info_to_front_port(0, 194, &(front = S)), front}), V({0, S}));
    });
}

INSTANTIATE_TEST_SUITE_P(Families, Tolvar, ::testing::Values(&k2Slice, &k1Slice),
                         [](const auto &info) { return std::string(info.param->name); });

} // namespace
