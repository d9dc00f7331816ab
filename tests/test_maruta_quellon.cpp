// maruta and quellon: the two one-subslot families whose port tables a
// front port indexes directly.  Expected values come from the wiring rules
// written here.
#include <algorithm>
#include <array>
#include <tuple>

#include "test_support.h"

namespace {

using namespace cvn_test;
using Out4 = std::array<uint32_t, 4>;
constexpr uint32_t kS = kSentinel;
constexpr Out4 kUntouched = {kS, kS, kS, kS};

// A call's result with the outputs it wrote, read after the call.
template <class... T> std::tuple<uint32_t, T...> After(uint32_t result, const T &...outs)
{
    return {result, outs...};
}

// maruta: NP n (0, 1) serves its 100GE port at front 32n (NP-local 116) and
// its ten 10GE ports at fronts 32n+16+k (NP-local 204+k); fronts 0..57 index
// the table, the holes between hold all-0xFF fillers, 58 is the end entry.
struct Port {
    uint32_t np, np_port, type, fplate;
};
Port MarutaPort(uint32_t f)
{
    const uint32_t n = f / 32, r = f % 32;
    if (f <= 57 && r == 0)
        return {n, 116, CVN_NP_PORT_TYPE_100GE, f};
    if (f <= 57 && r >= 16 && r <= 25)
        return {n, 204 + r - 16, CVN_NP_PORT_TYPE_10GE, f};
    return {255, 255, 255, 255};
}
// maruta's tuple table: the 10GE ports of NP 0 then NP 1, the two 100GE ports, end.
uint32_t MarutaTupleFront(uint32_t idx)
{
    return idx < 20 ? 32 * (idx / 10) + 16 + idx % 10 : idx == 20 ? 0 : idx == 21 ? 32 : 255;
}
// quellon: port i (front = faceplate = i) is port i%4 of instance i/4, on NP
// i/24; each NP's NP-local ports 192..215 are paired and swapped in each pair.
uint32_t QuellonNpPort(uint32_t i) { return 192 + 4 * ((i / 4) % 6) + ((i % 4) ^ 1); }
bool IsQuellon(uint32_t type) { return type >= 0x3D02C7 && type <= 0x3D02D2; }
uint32_t QuellonNps(uint32_t type) // one NP on 0x3D02CA-CC and 0x3D02D0-D2
{
    return (type >= 0x3D02CA && type <= 0x3D02CC) || (type >= 0x3D02D0 && type <= 0x3D02D2) ? 1 : 2;
}

class Maruta : public LibTest {
  protected:
    Maruta() : LibTest(0x3D02C1) {}
};

class Quellon : public LibTest {
  protected:
    Quellon() : LibTest(0) {}
    static void Init(uint32_t type) { ASSERT_EQ((cardtype = type, cvn_np_lib_init(type)), 0u); }
    // instance k reports: k%4 == 0 quellon's 10GE, 1 a cage card's 10GE, 2 a
    // failing query, 3 nothing installed; only the first gives port type 1.
    static void PlugInstances()
    {
        for (uint32_t k = 0; k < 12; ++k)
            if (k % 4 != 3)
                Plug(0, k,
                     k % 4 ? (k % 4 == 1 ? CVN_NP_IFSUB_TYPE_10GE : kFails)
                           : CVN_NP_IFSUB_TYPE_QUELLON_10GE);
    }
    static uint32_t TypeOf(uint32_t i) { return (i / 4) % 4 == 0 ? CVN_NP_PORT_TYPE_10GE : 0; }
};

// The answers both families give alike, by a row of facts per card type,
// after an explicit and after a lazy init.
TEST_F(Quellon, EveryCardTypeOfBothFamiliesAnswersItsSummary)
{
    for (uint32_t type :
         {0x3D02C1u, 0x3D02DAu, 0x3D02C7u, 0x3D02C8u, 0x3D02C9u, 0x3D02CAu, 0x3D02CBu, 0x3D02CCu,
          0x3D02CDu, 0x3D02CEu, 0x3D02CFu, 0x3D02D0u, 0x3D02D1u, 0x3D02D2u})
        for (bool lazy : {false, true}) {
            SCOPED_TRACE(testing::Message() << std::hex << type << (lazy ? " lazy" : ""));
            const bool q = IsQuellon(type);
            const uint32_t n = q ? QuellonNps(type) : 2, ports = 24 * n;
            const port_info *info = q ? &quellon_port_info_list[0] : &port_info_maruta_100g;
            cvn_np_sim_reset(), cvn_np_sim_set_card_type(type);
            initialized = 0, card_np_api = nullptr, cardtype = 0, cvn_np_qln_max_ports = 0;
            if (lazy)
                EXPECT_EQ(cvn_np_chip_how_many(), n);
            else
                Init(type);
            EXPECT_EQ(cvn_np_sim_card_type_queries(), lazy ? 1u : 0u);
            EXPECT_EQ(std::tuple(cvn_np_how_many(), cvn_np_chip_how_many(), cvn_max_mtu()),
                      std::tuple(n, n, 9216u));
            const card_version *v = cvn_np_version_get();
            EXPECT_EQ(v, q ? &quellon_card_version : &maruta_card_version);
            EXPECT_EQ(std::pair(v->ver_major, v->ver_minor), std::pair(uint16_t(5), uint16_t('c')));
            const subslot_info *s = cvn_np_subslot_info_get();
            EXPECT_EQ(s, q ? &cvn_np_subslot_info_quellon : &maruta_card_subslot_info);
            EXPECT_EQ(Out4({s->num_of_subslots, s->max_ports_per_subslot,
                            s->max_of_ifsubsys_per_subslot, s->spare}),
                      q ? Out4({1, ports, 6 * n, ports}) : Out4({1, 24, 4, 255}));
            EXPECT_EQ(std::pair(cvn_np_port_info_get(), cvn_np_port_info_subslot(0)),
                      std::pair(info, q ? info : &port_info_maruta_combo0));
            uint32_t a = kS, b = kS;
            EXPECT_EQ(After(cvn_np_subslot_to_np_list(0, nullptr, &b), b),
                      std::tuple(kInvalid, kS));
            EXPECT_EQ(After(cvn_np_subslot_to_np_list(0, &a, nullptr), a),
                      std::tuple(kInvalid, kS));
            EXPECT_EQ(After(cvn_np_subslot_to_np_list(9, &a, &b), a, b), std::tuple(0u, n, 0u));
            EXPECT_EQ(cvn_np_set_if_subsys_type(1, 2), 0u);
            for (uint32_t np = 0; np < n; ++np) {
                EXPECT_EQ(std::tuple(cvn_np_info_num_local_ports(np),
                                     cvn_np_complex_to_subslot(uint8_t(np)),
                                     cvn_np_complex_to_np(uint8_t(np), 1),
                                     cvn_np_to_cpu_port_map(uint16_t(np))),
                          std::tuple(q ? 24u : 11u, 0u, np, 3u));
                a = b = kS;
                EXPECT_EQ(After(cvn_np_complex_to_subslot_list(uint8_t(np), nullptr, &b), b),
                          std::tuple(0u, kS));
                EXPECT_EQ(After(cvn_np_complex_to_subslot_list(uint8_t(np), &a, nullptr), a, b),
                          std::tuple(0u, 1u, kS));
                EXPECT_EQ(After(cvn_np_complex_to_subslot_list(uint8_t(np), &a, &b), a, b),
                          std::tuple(0u, 1u, 0u));
            }
            if (!q)
                continue;
            EXPECT_EQ(cvn_np_qln_max_ports, ports);
            EXPECT_EQ(cvn_np_port_info_from_subslot_ifsubinst(7, 99), info + 1);
            EXPECT_EQ(std::tuple(info[0].num_ports, info[0].port_type, info[1].num_ports,
                                 info[1].port_type, info[2].num_ports, info[2].port_type),
                      std::tuple(ports, CVN_NP_PORT_TYPE_COMBO, 4u, CVN_NP_PORT_TYPE_COMBO, 0u,
                                 CVN_NP_PORT_TYPE_END));
        }
    EXPECT_EQ(cvn_np_sim_ifsubsys_queries(), 0u);
}

// Every field of an entry: as exported, and as the wiring rules give it.
using Row = std::array<uint32_t, 5>;
Row Fields(const port_mapping_entry &e)
{
    return {e.phys_front_port, e.np, e.np_port, e.fplate_port, e.port_type};
}
Row Want(Port p) { return {p.fplate, p.np, p.np_port, p.fplate, p.type}; }
TEST_F(Maruta, ExportedTablesFollowTheWiring)
{
    for (uint32_t i = 0; i <= 58; ++i) { // fillers and end entry: every field 0xFF
        const uint32_t t = std::min(i, 22u);
        EXPECT_EQ(Fields(cvn_np_port_mapping_maruta_combo0[i]), Want(MarutaPort(i))) << i;
        EXPECT_EQ(Fields(cvn_np_port_mapping_maruta_combo0_tuple[t]),
                  Want(MarutaPort(MarutaTupleFront(t))));
    }
    for (uint32_t k = 0; k < 10; ++k)
        EXPECT_EQ(std::pair(cvn_phy_to_front_combo0_inst1[k], cvn_phy_to_front_combo0_inst3[k]),
                  std::pair(16 + k, 48 + k));
    EXPECT_EQ(std::pair(cvn_phy_to_front_combo0_inst0[0], cvn_phy_to_front_combo0_inst2[0]),
              std::pair(0u, 32u));
    for (auto [r, n, t] : {std::tuple{&port_info_maruta_combo0, 24u, CVN_NP_PORT_TYPE_COMBO},
                           {&port_info_maruta_10g, 10u, CVN_NP_PORT_TYPE_10GE},
                           {&port_info_maruta_100g, 1u, CVN_NP_PORT_TYPE_100GE},
                           {&port_info_maruat_dummy, 0u, CVN_NP_PORT_TYPE_END}})
        EXPECT_EQ(std::pair(r->num_ports, r->port_type), std::pair(n, t));
    for (uint32_t i = 0; i < 48; ++i) {
        const quellon_port_mapping_entry &e = cvn_np_port_mapping_quellon[i];
        EXPECT_EQ(std::tuple(e.phys_front_port, e.fplate_port, e.ifsubinst, e.ifsubinst_port, e.np,
                             e.np_port),
                  std::tuple(i, i, i / 4, i % 4, i / 24, QuellonNpPort(i)))
            << i;
    }
    EXPECT_EQ(std::tuple(QuellonNpPort(0), QuellonNpPort(3), QuellonNpPort(24), QuellonNpPort(47)),
              std::tuple(193u, 194u, 193u, 214u)); // the rule itself, by the listed entries
}

TEST_F(Maruta, FirstPortsOfAnNpAreConstants)
{
    uint32_t a = kS, b = kS;
    for (uint32_t np : {0u, 1u, 7u}) { // no NP check: any NP but 0 answers as NP 1
        EXPECT_EQ(After(cvn_np_first_front_port_on_np(np, &a), a), std::tuple(0u, np ? 48u : 0u));
        EXPECT_EQ(After(cvn_np_first_fplate_porttype_on_np(np, &a, &b), a, b),
                  std::tuple(0u, CVN_NP_PORT_TYPE_100GE, np ? 21u : 20u)); // the tuple indexes
    }
    b = kS;
    EXPECT_EQ(After(cvn_np_first_phys_port_on_np(0, &b), b), std::tuple(kInvalid, kS));
}

TEST_F(Maruta, EveryFrontAndFaceplatePortMapsByTheWiringWithoutAskingThePlatform)
{
    for (uint32_t f = 0; f <= 0x4F; ++f) {
        SCOPED_TRACE(f);
        const Port p = MarutaPort(f);
        const bool in_table = f <= 57;
        EXPECT_EQ(std::tuple(cvn_np_front_port_to_np(f), cvn_np_front_port_to_np_port(f),
                             cvn_np_front_port_to_port_type(f)),
                  std::tuple(p.np, p.np_port, p.type));
        Out4 o = kUntouched;
        EXPECT_EQ(cvn_np_front_port_mapping_info(f, &o[0], &o[1], &o[2], &o[3]), 0u);
        EXPECT_EQ(o, in_table ? Out4({p.np, p.np_port, p.fplate, p.type}) : kUntouched);
        o = kUntouched;
        EXPECT_EQ(cvn_np_front_port_to_face_plate_port(f, &o[0], nullptr), 0u);
        EXPECT_EQ(cvn_np_front_port_to_face_plate_port(f, nullptr, &o[1]), 0u);
        EXPECT_EQ(cvn_np_front_port_mapping_info(f, nullptr, nullptr, nullptr, &o[2]), 0u);
        EXPECT_EQ(o, in_table ? Out4({p.fplate, p.type, p.type, kS}) : kUntouched);
        // a faceplate port indexes the same table; 58 and past read the end entry
        const Port q = f <= 58 ? p : Port{255, 255, 255, 255};
        EXPECT_EQ(std::tuple(cvn_faceplate_porttype_to_np(1, f),
                             cvn_faceplate_porttype_to_np_port(4, f),
                             cvn_faceplate_porttype_to_phys_port(8, f)),
                  std::tuple(q.np, q.np_port, f));
        EXPECT_EQ(After(cvn_faceplate_porttype_mapping_info(0, f, &o[0], &o[1], &o[2]), o),
                  std::tuple(0u, Out4({q.np, q.np_port, q.fplate, kS})));
        // the tuple index of a front port (slot 45): 22 and nothing written off the table
        uint32_t idx = kS, want = kS;
        for (uint32_t i = 0; i <= 22; ++i)
            want = (want == kS && MarutaTupleFront(i) == f) ? i : want;
        EXPECT_EQ(After(aux_cvn_np_front_port_to_ifsubinst(f, &idx), idx),
                  std::tuple(want == kS ? 22u : 0u, want));
    }
    uint32_t idx = kS; // the end entry's 255 is found as written
    EXPECT_EQ(After(aux_cvn_np_front_port_to_ifsubinst(255, &idx), idx), std::tuple(0u, 22u));
    EXPECT_EQ(aux_cvn_np_front_port_to_ifsubinst(16, nullptr), 22u);
    EXPECT_EQ(std::pair(cvn_np_front_port_to_np(0x100), cvn_np_front_port_to_port_type(0x110)),
              std::pair(255u, 255u)); // the whole value is compared
    EXPECT_EQ(cvn_np_sim_ifsubsys_queries(), 0u);
}

TEST_F(Maruta, FrontPortEncodingAndTupleIndexes)
{
    for (uint32_t v : {0x00u, 0x19u, 0x3Fu, 0x5Au, 0xFFu, 0x123u, 0xABCDEu}) {
        EXPECT_EQ(std::tuple(cvn_np_lib_set_subslot_phy_port(3, v), cvn_np_lib_get_subslot(v),
                             cvn_np_lib_get_subslot_port(v), cvn_np_lib_get_port(v),
                             cvn_np_lib_get_ifsubinst(v), cvn_np_lib_get_ifsubinst_port(v)),
                  std::tuple(v & 0xFF, 0u, v & 0xFF, v & 0xFF, (v >> 4) & 0xF, v & 0xF))
            << v;
        EXPECT_EQ(cvn_np_lib_set_subslot_ifsubinst_ifsubinst_port(1, v, v + 3),
                  ((v << 4) & 0xFF) | ((v + 3) & 0xF))
            << v;
    }
    for (uint32_t i = 0; i <= 30; ++i) // index = ifsubinst + port; past 22 the end entry
        EXPECT_EQ(cvn_np_lib_get_phys_port_tuple45(1, 0, uint16_t(i / 2), uint16_t(i - i / 2)),
                  i <= 22 ? MarutaTupleFront(i) : 255u)
            << i;
}

TEST_F(Maruta, NpLocalPortsMapBackToTheFirstMatchingEntry)
{
    for (uint32_t np = 0; np <= 2; ++np)
        for (uint32_t port = 100; port <= 0x1FF; ++port) {
            SCOPED_TRACE(testing::Message() << np << " " << port);
            uint32_t want = kS; // first front whose entry has (np, port)
            for (uint32_t f = 0; f <= 57 && want == kS; ++f)
                want = (MarutaPort(f).np == np && MarutaPort(f).np_port == port) ? f : kS;
            const Port p = MarutaPort(want);
            Out4 o = kUntouched;
            aux_cvn_np_info_to_mapping_info(np, port, 0x10041, &o[0], &o[1], &o[2]);
            EXPECT_EQ(o, want == kS ? kUntouched : Out4({want, want, p.type, kS}));
            o = kUntouched;
            EXPECT_EQ(cvn_np_info_to_fplate_porttype(np, port, &o[0], &o[1]),
                      np < 2 ? 0 : kInvalid);
            EXPECT_EQ(cvn_np_info_to_front_port(np, port, &o[2]), np < 2 ? 0 : kInvalid);
            EXPECT_EQ(o, np < 2 && want != kS ? Out4({want, p.type, want, kS}) : kUntouched);
        }
    Out4 o = kUntouched; // only the fillers match NP 255, NP-local 255
    aux_cvn_np_info_to_mapping_info(255, 255, 0, &o[0], &o[1], &o[2]);
    EXPECT_EQ(o, Out4({255, 255, 255, kS}));
}

TEST_F(Maruta, InstancesAskThePlatformAndPickTheirPortCounts)
{
    // instance 0: 100GE, 1: 10GE, 2: a type maruta does not know, 3: nothing installed
    Plug(0, 0, CVN_NP_IFSUB_TYPE_MARUTA_100GE), Plug(0, 1, CVN_NP_IFSUB_TYPE_MARUTA_10GE);
    Plug(0, 2, CVN_NP_IFSUB_TYPE_100GE), Plug(0, 4, kFails),
        Plug(1, 3, CVN_NP_IFSUB_TYPE_MARUTA_10GE);
    const std::tuple<uint32_t, uint32_t, const port_info *> rows[] = {
        {0, CVN_NP_IFSUB_TYPE_MARUTA_100GE, &port_info_maruta_100g},
        {1, CVN_NP_IFSUB_TYPE_MARUTA_10GE, &port_info_maruta_10g},
        {2, CVN_NP_IFSUB_TYPE_100GE, &port_info_maruat_dummy},
        {3, CVN_NP_IFSUB_TYPE_NONE, &port_info_maruat_dummy}};
    for (auto [inst, type, info] : rows) {
        SCOPED_TRACE(inst);
        EXPECT_EQ(cvn_np_port_info_from_subslot_ifsubinst(0, uint16_t(inst)), info);
        EXPECT_EQ(cvn_np_port_info_from_subslot_ifsubinst(0, uint16_t(inst + 0x10)), info);
        EXPECT_EQ(aux_cvn_np_port_info_get(0, 7, type), info);
        Out4 o = kUntouched;
        EXPECT_EQ(aux_cvn_np_front_port_to_ifsubsys(16 * inst + 9, &o[0], &o[1], &o[2]), 0u);
        EXPECT_EQ(o, Out4({0, inst, type, kS}));
        for (uint32_t k = 0; k < (inst % 2 ? 10 : 1); ++k) { // an instance's k-th port
            const uint32_t f = 32 * (inst / 2) + 16 * (inst % 2) + k;
            const Port p = MarutaPort(f);
            aux_cvn_np_front_port_to_mapping_info(inst, k, 0, &o[0], &o[1], &o[2], &o[3]);
            EXPECT_EQ(o, Out4({p.np, p.np_port, p.fplate, p.type})) << k;
        }
        Out4 past = kUntouched; // past the instance's ports: the end entry
        aux_cvn_np_front_port_to_mapping_info(inst, inst % 2 ? 10 : 1, 0, &past[0], nullptr,
                                              &past[2], nullptr);
        EXPECT_EQ(past, Out4({255, kS, 255, kS}));
    }
    Out4 o = kUntouched; // instance 4's query fails: its status, nothing written
    EXPECT_EQ(aux_cvn_np_front_port_to_ifsubsys(0x41, &o[0], &o[1], &o[2]), kFailStatus);
    EXPECT_EQ(o, kUntouched);
    EXPECT_EQ(cvn_np_port_info_from_subslot_ifsubinst(0, 4), &port_info_maruat_dummy);
    EXPECT_EQ(aux_cvn_np_port_info_get(0, 0, 0x10042), &port_info_maruat_dummy);
}

TEST_F(Quellon, EveryPortAndNpLocalPortMapsByItsIndexAndAsksItsInstanceForTheType)
{
    for (auto [type, n] : {std::pair{0x3D02C7u, 2u}, std::pair{0x3D02CAu, 1u}}) { // two NPs, one
        Init(type);
        PlugInstances();
        for (uint32_t f = 0; f < 0x300; ++f) {
            SCOPED_TRACE(testing::Message() << n << " NP, front " << f);
            const uint32_t i = f & 0xFF, np = i / 24, t = TypeOf(i);
            Out4 o = kUntouched, p = kUntouched;
            if (i >= 24 * n) {
                EXPECT_EQ(cvn_np_front_port_mapping_info(f, &o[0], &o[1], &o[2], &o[3]), kInvalid);
                EXPECT_EQ(cvn_np_front_port_to_face_plate_port(f, &o[0], &o[1]), kInvalid);
                EXPECT_EQ(std::pair(o, cvn_np_lib_get_subslot_port(f)), std::pair(kUntouched, i));
                continue;
            }
            EXPECT_EQ(std::tuple(cvn_np_front_port_to_np(f), cvn_np_front_port_to_np_port(f),
                                 cvn_np_front_port_to_port_type(f)),
                      std::tuple(np, QuellonNpPort(i), t));
            EXPECT_EQ(std::tuple(cvn_faceplate_porttype_to_np(4, f),
                                 cvn_faceplate_porttype_to_np_port(1, f),
                                 cvn_faceplate_porttype_to_phys_port(0, f)),
                      std::tuple(np, QuellonNpPort(i), i));
            EXPECT_EQ(After(cvn_np_front_port_mapping_info(f, &o[0], &o[1], &o[2], &o[3]), o),
                      std::tuple(0u, Out4({np, QuellonNpPort(i), i, t})));
            EXPECT_EQ(After(cvn_faceplate_porttype_mapping_info(9, f, &p[0], &p[1], &p[2]), p),
                      std::tuple(0u, Out4({np, QuellonNpPort(i), i, kS})));
            o = kUntouched;
            const uint32_t asked = cvn_np_sim_ifsubsys_queries();
            EXPECT_EQ(cvn_np_front_port_to_face_plate_port(f, &o[0], nullptr), 0u);
            EXPECT_EQ(cvn_np_front_port_mapping_info(f, nullptr, &o[1], nullptr, nullptr), 0u);
            EXPECT_EQ(cvn_np_sim_ifsubsys_queries(), asked); // no type wanted, none asked
            EXPECT_EQ(cvn_np_front_port_to_face_plate_port(f, nullptr, &o[2]), 0u);
            EXPECT_EQ(o, Out4({i, QuellonNpPort(i), t, kS}));
            EXPECT_EQ(std::tuple(cvn_np_lib_get_subslot(f), cvn_np_lib_get_subslot_port(f),
                                 cvn_np_lib_get_port(f), cvn_np_lib_get_ifsubinst(f),
                                 cvn_np_lib_get_ifsubinst_port(f)),
                      std::tuple(0u, i, i, i / 4, i % 4));
            EXPECT_EQ(
                std::tuple(cvn_np_lib_set_subslot_phy_port(7, i),
                           cvn_np_lib_set_subslot_ifsubinst_ifsubinst_port(3, i / 4, i % 4 + 4 * f),
                           cvn_np_lib_get_phys_port_tuple45(0, 9, uint16_t(i), 3)),
                std::tuple(i, i, i));
        }
        for (uint32_t np = 0; np <= 2; ++np) { // NP-local ports back to ports
            SCOPED_TRACE(testing::Message() << n << " NP, NP " << np);
            const uint32_t first = 24 * np + 1; // NP-local 192 is the NP's second port
            Out4 o = kUntouched;
            EXPECT_EQ(After(cvn_np_first_front_port_on_np(np, &o[0]), o[0]),
                      np < n ? std::tuple(0u, first) : std::tuple(kInvalid, kS));
            EXPECT_EQ(After(cvn_np_first_phys_port_on_np(np, &o[1]), o[1]),
                      np < n ? std::tuple(0u, first) : std::tuple(kInvalid, kS));
            EXPECT_EQ(After(cvn_np_first_fplate_porttype_on_np(np, &o[2], &o[3]), o),
                      np < n ? std::tuple(0u, Out4({first, first, TypeOf(first), first}))
                             : std::tuple(kInvalid, kUntouched));
            for (uint32_t port : {0u, 191u, 192u, 193u, 200u, 214u, 215u, 216u, 0x100C1u}) {
                uint32_t want = kS; // the port of this NP with that NP-local port
                for (uint32_t i = 24 * np; i < 24 * std::min(np + 1, n); ++i)
                    want = QuellonNpPort(i) == port ? i : want;
                const uint32_t result = np < n ? 0 : kInvalid;
                o = kUntouched;
                EXPECT_EQ(cvn_np_info_to_front_port(np, port, &o[0]), result) << port;
                EXPECT_EQ(cvn_np_info_to_fplate_porttype(np, port, &o[1], &o[2]), result) << port;
                EXPECT_EQ(cvn_np_info_to_fplate_porttype(np, port, &o[3], nullptr), result) << port;
                EXPECT_EQ(o, Out4({want, want, want == kS ? kS : TypeOf(want), want})) << port;
            }
        }
    }
}

// Slots a family leaves empty: CVN_NP_ERR_INVALID, NULL or nothing, and no query.
TEST_F(Quellon, EmptySlotsRejectAndWriteNothing)
{
    for (uint32_t type : {0x3D02C1u, 0x3D02C7u}) {
        Init(type);
        Plug(0, 0, CVN_NP_IFSUB_TYPE_QUELLON_10GE);
        const bool q = IsQuellon(type);
        const uint32_t t = q ? CVN_NP_IFSUB_TYPE_QUELLON_10GE : CVN_NP_IFSUB_TYPE_MARUTA_10GE;
        Out4 o = kUntouched;
        EXPECT_EQ(aux_cvn_np_info_num_local_ports(0, 0, t), kInvalid);
        EXPECT_EQ(aux_cvn_np_first_port_on_np(0, 1, t, &o[0], &o[1], &o[2]), kInvalid);
        EXPECT_EQ(aux_cvn_faceplate_to_mapping_info(1, 0, 1, &o[0], &o[1], &o[2]), kInvalid);
        const port_mapping_entry *const entries[] = {&cvn_np_port_mapping_maruta_combo0[16]};
        aux_np_port_to_mapping_info(entries, 204, 1, &o[0], &o[1], &o[2]);
        if (q) { // quellon leaves every auxiliary slot empty
            EXPECT_EQ(aux_cvn_np_front_port_to_ifsubsys(0, &o[0], &o[1], &o[2]), kInvalid);
            EXPECT_EQ(aux_cvn_np_port_info_get(0, 0, t), nullptr);
            aux_cvn_np_front_port_to_mapping_info(0, 0, t, &o[0], &o[1], &o[2], &o[3]);
            aux_cvn_np_info_to_mapping_info(0, 193, t, &o[0], &o[1], &o[2]);
            EXPECT_EQ(aux_cvn_np_front_port_to_ifsubinst(0, &o[3]), kInvalid);
        }
        EXPECT_EQ(o, kUntouched);
        EXPECT_EQ(cvn_np_sim_ifsubsys_queries(), 0u);
    }
}

} // namespace
