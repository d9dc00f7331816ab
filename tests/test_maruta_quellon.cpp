// maruta and quellon, the one-subslot families whose port tables a front port
// indexes directly; expected values come from the wiring rules written here.
#include <algorithm>
#include <array>
#include <tuple>

#include "test_support.h"

namespace {
using namespace cvn_test;
using std::pair;
using std::tuple;
using Out4 = std::array<uint32_t, 4>;
constexpr uint32_t kS = kSentinel, k10G = 1, kCombo = 2, k100G = 4, kEnd = 8;
constexpr Out4 kUntouched = {kS, kS, kS, kS};
// A call's result with the outputs it wrote, read after the call.
template <class... T> tuple<uint32_t, T...> After(uint32_t r, const T &...o) { return {r, o...}; }
// maruta: NP n (0, 1) serves its 100GE port at front 32n (NP-local 116) and
// its ten 10GE ports at fronts 32n+16+k (NP-local 204+k); fronts 0..57 index
// the table, the holes between hold all-0xFF fillers, 58 is the end entry.
struct Port {
    uint32_t np, np_port, type, fplate;
};
Port MarutaPort(uint32_t f)
{
    const uint32_t n = f / 32, r = f % 32;
    if (f > 57 || (r != 0 && (r < 16 || r > 25)))
        return {255, 255, 255, 255};
    return r == 0 ? Port{n, 116, k100G, f} : Port{n, 204 + (r - 16), k10G, f};
}
// maruta's tuple table: the 10GE ports of NP 0 then NP 1, the two 100GE ports, end.
uint32_t TupleFront(uint32_t i)
{
    return i < 20 ? 32 * (i / 10) + 16 + i % 10 : i < 22 ? 32 * (i - 20) : 255;
}
// quellon: port i (front = faceplate = i) is port i%4 of instance i/4, on NP
// i/24; each NP's NP-local ports 192..215 are paired and swapped in each pair.
uint32_t QuellonNpPort(uint32_t i) { return 192 + 4 * ((i / 4) % 6) + ((i % 4) ^ 1); }
bool IsQuellon(uint32_t type) { return type >= 0x3D02C7 && type <= 0x3D02D2; }
bool OneNp(uint32_t t) { return IsQuellon(t) && (t - 0x3D02C7) % 6 >= 3; } // CA-CC, D0-D2
struct Maruta : LibTest {
    Maruta() : LibTest(0x3D02C1) {}
};
struct Quellon : LibTest {
    Quellon() : LibTest(0) {}
    static void Init(uint32_t type) { ASSERT_EQ((cardtype = type, cvn_np_lib_init(type)), 0u); }
    // Instance k%4: 0 quellon's 10GE (port type 1), 1 a cage card's 10GE, 2 failing, 3 empty.
    static uint32_t TypeOf(uint32_t i) { return (i / 4) % 4 == 0 ? k10G : 0; }
};
// Both families' summaries, a row of facts per card type, by explicit and lazy init.
TEST_F(Quellon, EveryCardTypeOfBothFamiliesAnswersItsSummary)
{
    for (uint32_t type = 0x3D02C1; type <= 0x3D02DA; ++type)
        for (bool lazy : {false, true}) {
            const bool q = IsQuellon(type);
            if (!q && type != 0x3D02C1 && type != 0x3D02DA)
                continue;
            SCOPED_TRACE(testing::Message() << std::hex << type << (lazy ? " lazy" : ""));
            const uint32_t n = OneNp(type) ? 1 : 2, ports = 24 * n;
            const port_info *info = q ? &quellon_port_info_list[0] : &port_info_maruta_100g;
            cvn_np_sim_reset(), cvn_np_sim_set_card_type(type);
            initialized = 0, card_np_api = nullptr, cardtype = 0, cvn_np_qln_max_ports = 0;
            if (lazy)
                EXPECT_EQ(cvn_np_chip_how_many(), n);
            else
                Init(type);
            const card_version *v = cvn_np_version_get();
            EXPECT_EQ(v, q ? &quellon_card_version : &maruta_card_version);
            EXPECT_EQ(tuple(cvn_np_how_many(), cvn_np_chip_how_many(), cvn_max_mtu(), v->ver_major,
                            v->ver_minor, cvn_np_sim_card_type_queries()),
                      tuple(n, n, 9216u, 5, 'c', lazy ? 1u : 0u));
            const subslot_info *s = cvn_np_subslot_info_get();
            EXPECT_EQ(s, q ? &cvn_np_subslot_info_quellon : &maruta_card_subslot_info);
            EXPECT_EQ(Out4({s->num_of_subslots, s->max_ports_per_subslot,
                            s->max_of_ifsubsys_per_subslot, s->spare}),
                      q ? Out4({1, ports, 6 * n, ports}) : Out4({1, 24, 4, 255}));
            EXPECT_EQ(pair(cvn_np_port_info_get(), cvn_np_port_info_subslot(0)),
                      pair(info, q ? info : &port_info_maruta_combo0));
            uint32_t a = kS, b = kS;
            EXPECT_EQ(After(cvn_np_subslot_to_np_list(0, nullptr, &b), b), tuple(kInvalid, kS));
            EXPECT_EQ(After(cvn_np_subslot_to_np_list(0, &a, nullptr), a), tuple(kInvalid, kS));
            EXPECT_EQ(After(cvn_np_complex_to_subslot_list(0, nullptr, &b), b), tuple(0u, kS));
            EXPECT_EQ(After(cvn_np_complex_to_subslot_list(0, &a, &b), a, b), tuple(0u, 1u, 0u));
            EXPECT_EQ(After(cvn_np_subslot_to_np_list(9, &a, &b), a, b), tuple(0u, n, 0u));
            for (uint32_t np = 0; np < n; ++np)
                EXPECT_EQ(tuple(cvn_np_info_num_local_ports(np), cvn_np_complex_to_subslot(np),
                                cvn_np_complex_to_np(np, 1), cvn_np_to_cpu_port_map(np),
                                cvn_np_set_if_subsys_type(np, 2)),
                          tuple(q ? 24u : 11u, 0u, np, 3u, 0u));
            if (!q)
                continue;
            EXPECT_EQ(pair(cvn_np_qln_max_ports, cvn_np_port_info_from_subslot_ifsubinst(7, 99)),
                      pair(uint16_t(ports), info + 1));
            EXPECT_EQ(tuple(info[0].num_ports, info[0].port_type, info[1].num_ports,
                            info[1].port_type, info[2].num_ports, info[2].port_type),
                      tuple(ports, kCombo, 4u, kCombo, 0u, kEnd));
        }
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
    for (uint32_t i = 0; i <= 58; ++i) // fillers and end entries: every field 0xFF
        EXPECT_EQ(pair(Fields(cvn_np_port_mapping_maruta_combo0[i]),
                       Fields(cvn_np_port_mapping_maruta_combo0_tuple[std::min(i, 22u)])),
                  pair(Want(MarutaPort(i)), Want(MarutaPort(TupleFront(i)))))
            << i;
    for (uint32_t k = 0; k < 10; ++k) // the instances' ports: 0 | 16..25 | 32 | 48..57
        EXPECT_EQ(tuple(cvn_phy_to_front_combo0_inst0[0], cvn_phy_to_front_combo0_inst1[k],
                        cvn_phy_to_front_combo0_inst2[0], cvn_phy_to_front_combo0_inst3[k]),
                  tuple(0u, 16 + k, 32u, 48 + k));
    const port_info &c = port_info_maruta_combo0, &t = port_info_maruta_10g,
                    &h = port_info_maruta_100g, &d = port_info_maruat_dummy;
    EXPECT_EQ(tuple(c.num_ports, c.port_type, t.num_ports, t.port_type, h.num_ports, h.port_type,
                    d.num_ports, d.port_type),
              tuple(24u, kCombo, 10u, k10G, 1u, k100G, 0u, kEnd));
}
TEST_F(Maruta, EveryPortMapsByTheWiringWithoutAskingThePlatform)
{
    for (uint32_t f = 0; f <= 0x4F; ++f) {
        SCOPED_TRACE(f);
        const Port p = MarutaPort(f); // from 58 on the faceplate calls read the end entry
        EXPECT_EQ(tuple(cvn_np_front_port_to_np(f), cvn_np_front_port_to_np_port(f),
                        cvn_np_front_port_to_port_type(f)),
                  tuple(p.np, p.np_port, p.type));
        Out4 o = kUntouched, s = kUntouched; // past 57: 0, nothing written
        EXPECT_EQ(cvn_np_front_port_mapping_info(f, &o[0], &o[1], &o[2], &o[3]) +
                      cvn_np_front_port_to_face_plate_port(f, &s[0], nullptr) +
                      cvn_np_front_port_to_face_plate_port(f, nullptr, &s[1]) +
                      cvn_np_front_port_mapping_info(f, nullptr, nullptr, nullptr, &s[2]),
                  0u);
        EXPECT_EQ(o, f <= 57 ? Out4({p.np, p.np_port, p.fplate, p.type}) : kUntouched);
        EXPECT_EQ(s, f <= 57 ? Out4({p.fplate, p.type, p.type, kS}) : kUntouched);
        EXPECT_EQ(tuple(cvn_faceplate_porttype_to_np(1, f), cvn_faceplate_porttype_to_np_port(4, f),
                        cvn_faceplate_porttype_to_phys_port(8, f)),
                  tuple(p.np, p.np_port, f));
        EXPECT_EQ(After(cvn_faceplate_porttype_mapping_info(0, f, &o[0], &o[1], &o[2]), o),
                  tuple(0u, Out4({p.np, p.np_port, p.fplate, o[3]})));
        uint32_t idx = kS, want = kS; // slot 45: the tuple index of a front port
        for (uint32_t i = 0; i <= 22; ++i)
            want = (want == kS && TupleFront(i) == f) ? i : want;
        EXPECT_EQ(After(aux_cvn_np_front_port_to_ifsubinst(f, &idx), idx),
                  tuple(want == kS ? 22u : 0u, want));
        const uint32_t w = f | (f % 3) << 12; // some wide; tuple45: index ifsubinst + port
        EXPECT_EQ(tuple(cvn_np_lib_set_subslot_phy_port(3, w), cvn_np_lib_get_subslot(w),
                        cvn_np_lib_get_subslot_port(w), cvn_np_lib_get_port(w),
                        cvn_np_lib_get_ifsubinst(w), cvn_np_lib_get_ifsubinst_port(w),
                        cvn_np_lib_set_subslot_ifsubinst_ifsubinst_port(1, w, w + 3)),
                  tuple(f, 0u, f, f, f >> 4, f & 0xF, ((f << 4) & 0xFF) | ((f + 3) & 0xF)));
        EXPECT_EQ(cvn_np_lib_get_phys_port_tuple45(1, 0, f / 2, f - f / 2), TupleFront(f));
    }
    uint32_t idx = kS; // the end entry's 255 is found as written
    EXPECT_EQ(After(aux_cvn_np_front_port_to_ifsubinst(255, &idx), idx), tuple(0u, 22u));
    EXPECT_EQ(aux_cvn_np_front_port_to_ifsubinst(16, nullptr), 22u);
    uint32_t a = kS, b = kS, c = kS; // no NP check: any NP but 0 answers as NP 1
    for (uint32_t np : {0u, 1u, 7u}) // fplate: the tuple indexes of the 100GE ports
        EXPECT_EQ(After(cvn_np_first_front_port_on_np(np, &a) +
                            cvn_np_first_fplate_porttype_on_np(np, &b, &c),
                        a, b, c),
                  tuple(0u, np ? 48u : 0u, k100G, np ? 21u : 20u));
    EXPECT_EQ(After(cvn_np_first_phys_port_on_np(0, &idx), idx), tuple(kInvalid, 22u));
    // NP-local ports map back to the first entry with that NP and NP-local port
    for (uint32_t np = 0; np <= 2; ++np)
        for (uint32_t port = 100; port <= 0x1FF; ++port) {
            uint32_t want = kS; // first front whose entry has (np, port)
            for (uint32_t f = 0; f <= 57 && want == kS; ++f)
                want = (MarutaPort(f).np == np && MarutaPort(f).np_port == port) ? f : kS;
            const Port p = MarutaPort(want);
            Out4 o = kUntouched, s = kUntouched;
            aux_cvn_np_info_to_mapping_info(np, port, 0x10041, &o[0], &o[1], &o[2]);
            const uint32_t r = np < 2 ? 0 : kInvalid; // NP 2 and on: rejected
            EXPECT_EQ(cvn_np_info_to_fplate_porttype(np, port, &s[0], &s[1]), r);
            EXPECT_EQ(cvn_np_info_to_front_port(np, port, &s[2]), r);
            EXPECT_EQ(o, want == kS ? kUntouched : Out4({want, want, p.type, kS})) << np << port;
            EXPECT_EQ(s, np < 2 && want != kS ? Out4({want, p.type, want, kS}) : kUntouched)
                << port;
        }
    Out4 o = kUntouched; // only the fillers match NP 255, NP-local 255
    aux_cvn_np_info_to_mapping_info(255, 255, 0, &o[0], &o[1], &o[2]);
    EXPECT_EQ(o, Out4({255, 255, 255, kS}));
    EXPECT_EQ(cvn_np_sim_ifsubsys_queries(), 0u);
}
TEST_F(Maruta, InstancesAskThePlatformAndPickTheirPortCounts)
{
    Plug(1, 3, CVN_NP_IFSUB_TYPE_MARUTA_10GE); // another subslot's: never asked for
    const port_info *p100 = &port_info_maruta_100g, *p10 = &port_info_maruta_10g,
                    *none = &port_info_maruat_dummy; // instance 4: the failing query
    // instance 0: 100GE, 1: 10GE, 2: a type maruta does not know, 3: nothing installed
    const tuple<uint32_t, uint32_t, const port_info *> rows[] = {
        {0, 0x10040, p100}, {1, 0x10041, p10}, {2, 0x10000, none}, {3, ~0u, none}, {4, kS, none}};
    for (auto [inst, type, info] : rows) {
        if (inst != 3)
            Plug(0, inst, inst == 4 ? kFails : type);
        EXPECT_EQ(tuple(cvn_np_port_info_from_subslot_ifsubinst(0, inst),
                        cvn_np_port_info_from_subslot_ifsubinst(0, inst + 0x10), // as instance
                        aux_cvn_np_port_info_get(0, 7, type)),
                  tuple(info, info, info));
        Out4 o = kUntouched;
        EXPECT_EQ(aux_cvn_np_front_port_to_ifsubsys(16 * inst + 9, &o[0], &o[1], &o[2]),
                  inst == 4 ? kFailStatus : 0u);
        EXPECT_EQ(o, inst == 4 ? kUntouched : Out4({0, inst, type, kS}));
        for (uint32_t k = 0; inst < 4 && k <= (inst % 2 ? 10u : 1u); ++k) { // k-th port, past
            const Port p =
                MarutaPort(k == (inst % 2 ? 10u : 1u) ? 58 : 32 * (inst / 2) + 16 * (inst % 2) + k);
            aux_cvn_np_front_port_to_mapping_info(inst, k, 0, &o[0], &o[1], &o[2], &o[3]);
            EXPECT_EQ(o, Out4({p.np, p.np_port, p.fplate, p.type})) << k;
        }
    }
}
TEST_F(Quellon, EveryPortAndNpLocalPortMapsByItsIndexAndAsksItsInstanceForTheType)
{
    for (auto [type, n] : {pair{0x3D02C7u, 2u}, pair{0x3D02CAu, 1u}}) { // two NPs, one
        Init(type);
        for (uint32_t k = 0; k < 12; k += 1 + (k % 4 == 2)) // instance 3 mod 4: nothing
            Plug(0, k, k % 4 ? (k % 4 == 1 ? CVN_NP_IFSUB_TYPE_10GE : kFails) : 0x10021u);
        for (uint32_t f = 0; f < 0x300; ++f) {
            SCOPED_TRACE(testing::Message() << n << " NP, front " << f);
            const uint32_t i = f & 0xFF, np = i / 24, t = TypeOf(i), npp = QuellonNpPort(i);
            Out4 o = kUntouched, p = kUntouched;
            if (i >= 24 * n) {
                EXPECT_EQ(cvn_np_front_port_mapping_info(f, &o[0], &o[1], &o[2], &o[3]), kInvalid);
                EXPECT_EQ(cvn_np_front_port_to_face_plate_port(f, &o[0], &o[1]), kInvalid);
                EXPECT_EQ(pair(o, cvn_np_lib_get_subslot_port(f)), pair(kUntouched, i));
                continue;
            }
            const quellon_port_mapping_entry &e = cvn_np_port_mapping_quellon[i]; // every field
            EXPECT_EQ(tuple(e.phys_front_port, e.fplate_port, e.ifsubinst, e.ifsubinst_port, e.np,
                            e.np_port, cvn_np_front_port_to_np(f), cvn_np_front_port_to_np_port(f),
                            cvn_np_front_port_to_port_type(f), cvn_faceplate_porttype_to_np(4, f),
                            cvn_faceplate_porttype_to_np_port(1, f),
                            cvn_faceplate_porttype_to_phys_port(0, f)),
                      tuple(i, i, i / 4, i % 4, np, npp, np, npp, t, np, npp, i));
            EXPECT_EQ(After(cvn_np_front_port_mapping_info(f, &o[0], &o[1], &o[2], &o[3]), o),
                      tuple(0u, Out4({np, npp, i, t})));
            EXPECT_EQ(After(cvn_faceplate_porttype_mapping_info(9, f, &p[0], &p[1], &p[2]), p),
                      tuple(0u, Out4({np, npp, i, kS})));
            o = kUntouched;
            const uint32_t asked = cvn_np_sim_ifsubsys_queries();
            EXPECT_EQ(cvn_np_front_port_to_face_plate_port(f, &o[0], nullptr), 0u);
            EXPECT_EQ(cvn_np_front_port_mapping_info(f, nullptr, &o[1], nullptr, nullptr), 0u);
            EXPECT_EQ(cvn_np_sim_ifsubsys_queries(), asked); // no type wanted, none asked
            EXPECT_EQ(cvn_np_front_port_to_face_plate_port(f, nullptr, &o[2]), 0u);
            EXPECT_EQ(o, Out4({i, npp, t, kS}));
            EXPECT_EQ(
                tuple(cvn_np_lib_get_subslot(f), cvn_np_lib_get_subslot_port(f),
                      cvn_np_lib_get_port(f), cvn_np_lib_get_ifsubinst(f),
                      cvn_np_lib_get_ifsubinst_port(f), cvn_np_lib_set_subslot_phy_port(7, i),
                      cvn_np_lib_set_subslot_ifsubinst_ifsubinst_port(3, i / 4, i % 4 + 4 * f),
                      cvn_np_lib_get_phys_port_tuple45(0, 9, i, 3)),
                tuple(0u, i, i, i / 4, i % 4, i, i, i));
        }
        for (uint32_t np = 0; np <= 2; ++np) {
            // NP-local ports back to ports; NP-local 192 is an NP's second port
            const uint32_t f = np < n ? 24 * np + 1 : kS, r = np < n ? 0 : kInvalid;
            Out4 o = kUntouched;
            EXPECT_EQ(cvn_np_first_front_port_on_np(np, &o[0]), r);
            EXPECT_EQ(cvn_np_first_phys_port_on_np(np, &o[1]), r);
            EXPECT_EQ(cvn_np_first_fplate_porttype_on_np(np, &o[2], &o[3]), r);
            EXPECT_EQ(o, Out4({f, f, f == kS ? kS : TypeOf(f), f}));
            for (uint32_t port : {0u, 191u, 192u, 193u, 200u, 214u, 215u, 216u, 0x100C1u}) {
                uint32_t want = kS; // the port of this NP with that NP-local port
                for (uint32_t i = 24 * np; i < 24 * std::min(np + 1, n); ++i)
                    want = QuellonNpPort(i) == port ? i : want;
                o = kUntouched;
                EXPECT_EQ(cvn_np_info_to_front_port(np, port, &o[0]), r) << port;
                EXPECT_EQ(cvn_np_info_to_fplate_porttype(np, port, &o[1], &o[2]), r) << port;
                EXPECT_EQ(cvn_np_info_to_fplate_porttype(np, port, &o[3], nullptr), r) << port;
                EXPECT_EQ(o, Out4({want, want, want == kS ? kS : TypeOf(want), want})) << port;
            }
        }
    }
    Init(0x3D02C7); // the bound stored limits every port; past 48 it counts as 48
    uint32_t front = kS;
    cvn_np_qln_max_ports = 24;
    EXPECT_EQ(After(cvn_np_info_to_front_port(1, 193, &front), front), tuple(0u, kS));
    cvn_np_qln_max_ports = 60;
    EXPECT_EQ(cvn_np_front_port_mapping_info(48, &front, nullptr, nullptr, nullptr), kInvalid);
    cvn_np_sim_reset(); // every auxiliary slot is empty: CVN_NP_ERR_INVALID, NULL or nothing
    const uint32_t t = CVN_NP_IFSUB_TYPE_QUELLON_10GE;
    const port_mapping_entry *const entries[] = {&cvn_np_port_mapping_maruta_combo0[16]};
    Out4 o = kUntouched;
    EXPECT_EQ(tuple(aux_cvn_np_front_port_to_ifsubsys(0, &o[0], &o[1], &o[2]),
                    aux_cvn_np_info_num_local_ports(0, 0, t),
                    aux_cvn_np_front_port_to_ifsubinst(0, &o[3]),
                    aux_cvn_np_first_port_on_np(0, 0, t, &o[0], &o[1], &o[2]),
                    aux_cvn_faceplate_to_mapping_info(1, 0, 1, &o[0], &o[1], &o[2])),
              tuple(kInvalid, kInvalid, kInvalid, kInvalid, kInvalid));
    EXPECT_EQ(aux_cvn_np_port_info_get(0, 0, t), nullptr);
    aux_cvn_np_front_port_to_mapping_info(0, 0, t, &o[0], &o[1], &o[2], &o[3]);
    aux_cvn_np_info_to_mapping_info(0, 193, t, &o[0], &o[1], &o[2]);
    aux_np_port_to_mapping_info(entries, 204, 1, &o[0], &o[1], &o[2]);
    EXPECT_EQ(o, kUntouched);
    EXPECT_EQ(cvn_np_sim_ifsubsys_queries(), 0u);
}
} // namespace

// Slots 14, 15 and 16 follow every replaced step of the selected table.
TEST_F(Maruta, ReplacedStepsAreObeyed)
{
    cvn_np_api &t = cvn_np_api_maruta;
    uint32_t f = kS, type = kS;
    Swap(
        t.cvn_np_how_many, +[] { return 0u; },
        [&] { EXPECT_EQ(cvn_np_info_to_front_port(0, 116, &f), kInvalid); });
    Swap(
        t.aux_cvn_np_info_to_mapping_info,
        +[](uint32_t, uint32_t, uint32_t, uint32_t *front, uint32_t *, uint32_t *) { *front = 66; },
        [&] {
            EXPECT_EQ(After(cvn_np_info_to_fplate_porttype(0, 116, &f, &type), f, type),
                      tuple(0u, 66u, kS));
        });
    Swap(
        t.cvn_np_info_to_fplate_porttype,
        +[](uint32_t, uint32_t, uint32_t *, uint32_t *) { return 9u; },
        [&] { EXPECT_EQ(cvn_np_info_to_front_port(0, 116, &f), 9u); });
}
TEST_F(Quellon, ReplacedStepsAreObeyed)
{
    Init(0x3D02C7);
    cvn_np_api &t = cvn_np_api_quellon;
    uint32_t f = kS;
    Swap(
        t.cvn_np_info_to_front_port, +[](uint32_t, uint32_t, uint32_t *) { return 9u; },
        [&] { EXPECT_EQ(cvn_np_first_front_port_on_np(0, &f), 9u); });
    // Two NPs to slot 16's own count, none to slot 14's.
    Swap(
        t.cvn_np_how_many,
        +[] {
            static uint32_t calls = 0;
            return ++calls % 2 != 0 ? 2u : 0u;
        },
        [&] { EXPECT_EQ(After(cvn_np_first_front_port_on_np(0, &f), f), tuple(kInvalid, kS)); });
    EXPECT_EQ(After(cvn_np_first_front_port_on_np(0, &f), f), tuple(0u, 1u));
}
