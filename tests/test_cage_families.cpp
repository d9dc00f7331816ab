// The cage cards (brisca, brisca_4p, fenna, dornik full and lite) as one suite:
// a row of facts per card written from the wiring rules, the behaviour they
// share run over every row, then each family's own differences.
#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>
#include <vector>

#include "test_support.h"

namespace {

using cvn_test::kFailStatus;
using cvn_test::kInvalid;
using cvn_test::kSentinel;
using cvn_test::Swap;
using Entry = port_mapping_entry;
using Map = const Entry *const *;
using V = std::vector<uint32_t>; // answers and outputs compared as one list
using P = std::vector<const void *>;
constexpr uint32_t S = kSentinel;
// A list of values, filled up to five with the sentinel.
template <class... T> V L(T... v)
{
    V r{uint32_t(v)...};
    r.resize(std::max<size_t>(r.size(), 5), S);
    return r;
}
// Outputs preset to the sentinel: RUN(call) is the answer of `call` and what
// it wrote through o, o1, o2, o3.
struct OutBuf {
    uint32_t o[4] = {};
    uint32_t *const o1 = o + 1, *const o2 = o + 2, *const o3 = o + 3;
    void Fresh() { std::fill(o, o + 4, S); }
    V Got(uint32_t r) const { return L(r, o[0], o[1], o[2], o[3]); }
};
#define RUN(call) (Fresh(), Got(call))
#define EXPECT_RUN(call, ...) EXPECT_EQ(RUN(call), L(__VA_ARGS__))
constexpr uint32_t kDornikT = CVN_NP_IFSUB_TYPE_DORNIK_100GE;
// Slots 8, 9 and 10 of a front port.
V ToNp(uint32_t fp)
{
    return L(cvn_np_front_port_to_np(fp), cvn_np_front_port_to_np_port(fp),
             cvn_np_front_port_to_port_type(fp));
}

// clang-format off
// One speed of a card: what the platform reports, the port type, ports per
// cage, and the exported tables and current-record pointers of the speed.
struct Speed {
    uint32_t ifsub, ptype, ppc;
    const Entry *table;
    Map np_map, fp_map, ph_map;
    size_t np_map_room;
    const int32_t *index; size_t index_size;
    const Map *cur_ph, *cur_fp, *cur_np;
    const port_info *list; // the speed's list (entry ptype of the array)
};
enum Slot4 { kScan, kComboAlways, k100Always };
struct Family {
    const char *name; uint32_t card_type;
    uint32_t table_cages; // cages of the mapping tables
    std::array<uint16_t, 23> info;
    const np_info *info_rec; const port_info *const *pi_array;
    const np_info *const *cur_info; const port_info *const *const *cur_pi;
    const port_info *dummy; const card_version *version; const subslot_info *ssi;
    std::array<uint16_t, 4> ssi_expected;
    std::vector<Speed> speeds;
    Slot4 slot4;
    bool alt40;      // 0x10003 is served by the 40GE tables
    bool per_np40;   // slot 40 counts an NP's cages, not one cage
    bool quiet_fail; // slots 16 and 18 treat a failed query as an empty cage
    int slot45_max;  // highest cage slot 45 accepts; -1: the slot is empty
    bool dornik;
    uint32_t cages() const { return info[5]; } uint32_t nps() const { return info[3]; }
    uint32_t cpn() const { return info[6]; } // cages per NP
};
#define SPEED(fam, spd, SPD, ifs, pt, ppc, room)                                                   \
    Speed{ifs, pt, ppc, cvn_np_port_mapping_##fam##_##spd, np_local_port_map_##fam##_##spd,        \
          fplate_port_map_##fam##_##spd, phys_front_port_map_##fam##_##spd, room,                  \
          fam##_phys_2_fplate_##SPD, std::size(fam##_phys_2_fplate_##SPD),                         \
          &fam##_card_phys_map_##spd##e, &fam##_card_fplate_map_##spd##e,                          \
          &fam##_card_np_port_map_##spd##e, port_info_##fam##_##spd}
#define THREE_SPEEDS(fam, room10, room40, room100)                                                 \
    {SPEED(fam, 100g, cage_100GE, 0x10000, 4, 1, room100),                                         \
     SPEED(fam, 40g, cage_40GE, 0x10001, 3, 2, room40), SPEED(fam, 10g, cage_10GE, 0x10002, 1, 10, room10)}
#define RECORDS(fam) &fam##_card_np_info, &fam##_card_port_info, fam##_dummy_port_info,            \
    &fam##_card_version, &fam##_card_subslot_info
#define DORNIK_SPEED                                                                               \
    {Speed{kDornikT, 4, 1, cvn_np_port_mapping_dornik_100g, np_local_port_map_dornik_100g,         \
           fplate_port_map_dornik_100g, phys_front_port_map_dornik_100g, 12,                       \
           dornik_phys_2_fplate_ifsub_100GE, std::size(dornik_phys_2_fplate_ifsub_100GE),          \
           &dornik_card_phys_map_100ge, &dornik_card_fplate_map_100ge,                             \
           &dornik_card_np_port_map_100ge, nullptr}}
// name, card type, cages of the mapping tables, np_info (23 fields in order),
// its record and port-info array, the current pointers and run-time records,
// the subslot summary, the speeds, then the family's differences.
const std::vector<Family> &Families()
{
    static const std::vector<Family> rows = {
        {"brisca", 0x3D026D, 8, {1, 0, 4, 4, 1, 8, 2, 5, 99, 9216, 8, 16, 80, 1, 8, 8, 16, 80, 1, 2, 1, 10, 0},
         &np_info_brisca, port_info_brisca, RECORDS(brisca), {1, 10, 8, 255},
         THREE_SPEEDS(brisca, 80, 16, 8), kScan, true, false, false, 7, false},
        {"brisca_4p", 0x3D0278, 4, {1, 0, 4, 4, 1, 4, 1, 5, 99, 9216, 8, 16, 80, 1, 8, 8, 16, 80, 1, 2, 1, 10, 0},
         &np_info_brisca_4p, port_info_brisca_4p, RECORDS(brisca_4p), {1, 10, 4, 255},
         THREE_SPEEDS(brisca_4p, 80, 16, 16), kComboAlways, true, false, true, 3, false},
        {"fenna", 0x3D0267, 6, {1, 0, 3, 3, 1, 6, 2, 5, 99, 9216, 6, 12, 60, 1, 8, 6, 12, 60, 1, 2, 0, 10, 0},
         &np_info_fenna, port_info_fenna, RECORDS(fenna), {1, 10, 6, 255},
         THREE_SPEEDS(fenna, 60, 12, 6), kScan, false, true, false, -1, false},
        {"dornik", 0x3D02C3, 12, {1, 0, 6, 6, 1, 12, 2, 5, 99, 9216, 12, 0, 0, 1, 12, 12, 0, 0, 1, 0, 0, 0, 0},
         &np_info_dornik, port_info_dornik, RECORDS(dornik), {1, 1, 12, 255},
         DORNIK_SPEED, k100Always, false, true, false, 11, true},
        {"dornik_lite", 0x3D02C2, 12, {1, 0, 2, 2, 1, 4, 2, 5, 99, 9216, 4, 0, 0, 1, 4, 4, 0, 0, 1, 0, 0, 0, 0},
         &np_info_dornik_lite, port_info_dornik_lite, RECORDS(dornik), {1, 1, 4, 255},
         DORNIK_SPEED, k100Always, false, true, false, 11, true},
    };
    return rows;
}
// clang-format on

// dornik: NPs 0 and 1 have 116 on their even cage, NPs 2 to 5 have 117.
constexpr uint16_t kDornikNpPort[12] = {116, 117, 116, 117, 117, 116, 117, 116, 117, 116, 117, 116};
// The NP-local port of port p of cage c: brisca and fenna cages 2n and 2n+1
// belong to NP n, the even cage with 204 + p (10GE), 99 + p (40GE), 117
// (100GE), the odd one with 192 + p, 96 + p, 116; each brisca_4p cage is the
// even (only) cage of its NP.
uint32_t NpPort(const Family &f, uint32_t c, uint32_t ptype, uint32_t p)
{
    if (f.dornik)
        return kDornikNpPort[c];
    const bool even = f.cpn() == 1 || c % 2 == 0;
    if (ptype == 1)
        return (even ? 204 : 192) + p;
    if (ptype == 3)
        return (even ? 99 : 96) + p;
    return even ? 117 : 116;
}

class CageTest : public cvn_test::LibTest,
                 public ::testing::WithParamInterface<Family>,
                 public OutBuf {
  protected:
    CageTest() : LibTest(GetParam().card_type) {} // sets cardtype, then initialises
    const Family &f = GetParam();
    bool Knows(uint32_t t) const // the module types the family maps
    {
        return f.dornik ? t == kDornikT
                        : (t >= 0x10000 && t <= 0x10002) || (t == 0x10003 && f.alt40);
    }
    void PlugAll(uint32_t type) const
    {
        for (uint32_t c = 0; c < f.cages(); ++c)
            Plug(0, c, type);
    }
};

void ExpectList(const port_info *list, uint32_t count, uint32_t type)
{
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(L(list[0].num_ports, list[0].port_type, list[1].num_ports, list[1].port_type),
              L(count, type, 0, CVN_NP_PORT_TYPE_END));
}

TEST_P(CageTest, ExportedTablesFollowTheWiring)
{
    std::array<uint16_t, 23> info{};
    static_assert(sizeof(np_info) == sizeof(info));
    std::memcpy(info.data(), f.info_rec, sizeof info);
    EXPECT_EQ(info, f.info);
    EXPECT_EQ(P({*f.cur_info, *f.cur_pi}), P({f.info_rec, f.pi_array}));
    EXPECT_EQ(L(f.version->ver_major, f.version->ver_minor), L(5, 99));
    EXPECT_EQ((std::array<uint16_t, 4>{f.ssi->num_of_subslots, f.ssi->max_ports_per_subslot,
                                       f.ssi->max_of_ifsubsys_per_subslot, f.ssi->spare}),
              f.ssi_expected);
    EXPECT_EQ(L(f.dummy[0].num_ports, f.dummy[0].port_type), L(0, CVN_NP_PORT_TYPE_END));
    ExpectList(f.pi_array[2], f.cages(), CVN_NP_PORT_TYPE_COMBO);
    EXPECT_EQ(f.pi_array[5], nullptr);
    if (f.dornik) { // NONE, 10GE and 40GE positions hold the dummy list
        for (int i : {0, 1, 3})
            EXPECT_EQ(f.pi_array[i], f.dummy) << i;
        ExpectList(f.pi_array[4], 1, CVN_NP_PORT_TYPE_100GE);
    } else {
        ExpectList(f.pi_array[0], 0, CVN_NP_PORT_TYPE_NONE);
    }
    for (const Speed &s : f.speeds) {
        if (s.list != nullptr) {
            EXPECT_EQ(f.pi_array[s.ptype], s.list);
            ExpectList(s.list, s.ppc, s.ptype);
        }
        EXPECT_EQ(P({*s.cur_ph, *s.cur_fp, *s.cur_np}), P({s.ph_map, s.fp_map, s.np_map}));
        const uint32_t n = f.table_cages * s.ppc;
        for (uint32_t i = 0; i <= n; ++i) { // entry i is cage i / ppc, port i % ppc
            const Entry &e = s.table[i];
            const uint32_t c = i / s.ppc, p = i % s.ppc, front = 16 * c + p;
            EXPECT_EQ(L(e.phys_front_port, e.np, e.np_port, e.fplate_port, e.port_type),
                      i == n ? L(255, 255, 255, 255, 255)
                             : L(front, c / f.cpn(), NpPort(f, c, s.ptype, p), front, s.ptype))
                << i;
        }
        for (uint32_t i = 0; i < s.np_map_room; ++i)
            EXPECT_EQ(s.np_map[i], i < n ? &s.table[i] : nullptr) << i;
        for (uint32_t i = 0; i < n; ++i)
            EXPECT_EQ(P({s.fp_map[i], s.ph_map[i]}), P({&s.table[i], &s.table[i]})) << i;
        ASSERT_EQ(s.index_size, 16 * f.table_cages);
        for (uint32_t i = 0; i < s.index_size; ++i) // front 16c + p
            EXPECT_EQ(s.index[i], i % 16 < s.ppc ? int32_t(i / 16 * s.ppc + i % 16) : 255) << i;
    }
}

TEST_P(CageTest, CardSummary)
{
    EXPECT_EQ(cvn_np_version_get(), f.version);
    EXPECT_EQ(cvn_np_subslot_info_get(), f.ssi);
    EXPECT_EQ(L(cvn_max_mtu(), cvn_np_how_many(), cvn_np_chip_how_many()),
              L(9216, f.nps(), f.nps()));
    ExpectList(cvn_np_port_info_subslot(0), f.cages(), CVN_NP_PORT_TYPE_COMBO);
    EXPECT_EQ(L(cvn_np_set_if_subsys_type(3, 7), cvn_np_to_cpu_port_map(5),
                cvn_np_first_phys_port_on_np(0, nullptr)),
              L(0, 3, kInvalid));
    EXPECT_RUN(cvn_np_subslot_to_np_list(9, o, nullptr), kInvalid);
    EXPECT_RUN(cvn_np_subslot_to_np_list(9, nullptr, o), kInvalid);
    EXPECT_RUN(cvn_np_subslot_to_np_list(9, o, o1), 0, f.nps(), 0, S, S);
    for (uint32_t n = 0; n < f.nps(); ++n) {
        EXPECT_EQ(
            L(cvn_np_complex_to_subslot(n), cvn_np_complex_to_np(n, 0), cvn_np_complex_to_np(n, 1)),
            L(0, n, n));
        EXPECT_RUN(cvn_np_complex_to_subslot_list(n, nullptr, o), 0);
        EXPECT_RUN(cvn_np_complex_to_subslot_list(n, o, nullptr), 0, 1);
        EXPECT_RUN(cvn_np_complex_to_subslot_list(n, o, o1), 0, 1, 0);
    }
    EXPECT_EQ(cvn_np_sim_ifsubsys_queries(), 0u);
}

// Every front port of every speed, both ways, with every cage running it.
TEST_P(CageTest, EveryPortOfEverySpeed)
{
    for (const Speed &s : f.speeds) {
        PlugAll(s.ifsub);
        for (uint32_t i = 0; i < f.cages() * s.ppc; ++i) {
            const uint32_t c = i / s.ppc, p = i % s.ppc, fp = 16 * c + p, t = s.ptype;
            const uint32_t np = c / f.cpn(), npp = NpPort(f, c, t, p);
            SCOPED_TRACE(fp);
            EXPECT_EQ(cvn_np_lib_set_subslot_ifsubinst_ifsubinst_port(0, c, p), fp);
            EXPECT_EQ(ToNp(fp), L(np, npp, t));
            EXPECT_RUN(cvn_np_front_port_to_face_plate_port(fp, o, o1), 0, fp, t);
            EXPECT_RUN(cvn_np_front_port_to_face_plate_port(fp, o, nullptr), kInvalid);
            EXPECT_RUN(cvn_np_front_port_mapping_info(fp, o, o1, o2, o3), 0, np, npp, fp, t);
            EXPECT_RUN(cvn_np_front_port_mapping_info(fp, nullptr, o1, nullptr, o3), 0, S, npp, S,
                       t);
            EXPECT_RUN((aux_cvn_np_front_port_to_mapping_info(c, fp, s.ifsub, o, 0, o2, 0), 0u), 0,
                       np, S, fp);
            // NP-local port back to the front (read from the tables only)
            EXPECT_RUN(cvn_np_info_to_front_port(np, npp, o), 0, fp);
            EXPECT_RUN(cvn_np_info_to_fplate_porttype(np, npp, o, o1), 0, fp, t);
            EXPECT_RUN((aux_cvn_np_info_to_mapping_info(np, npp, s.ifsub, o, o1, o2), 0u), 0, fp,
                       fp, t);
            // faceplate port to the NP
            EXPECT_EQ(L(cvn_faceplate_porttype_to_np(t, fp),
                        cvn_faceplate_porttype_to_np_port(t, fp),
                        cvn_faceplate_porttype_to_phys_port(t, fp)),
                      L(np, npp, fp));
            EXPECT_RUN(cvn_faceplate_porttype_mapping_info(t, fp, o, nullptr, o2), 0, np, S, fp);
            EXPECT_RUN(aux_cvn_faceplate_to_mapping_info(c, fp, t, nullptr, o1, o2), 0, S, npp, fp);
        }
        if (s.ptype == 3 && f.alt40) { // the other 40GE modules: the 40GE wiring
            PlugAll(CVN_NP_IFSUB_TYPE_40GE_ALT);
            for (uint32_t i = 0; i < 2 * f.cages(); ++i) {
                const uint32_t c = i / 2, fp = 16 * c + i % 2;
                EXPECT_EQ(ToNp(fp), L(c / f.cpn(), NpPort(f, c, 3, i % 2), 3));
            }
        }
    }
}

TEST_P(CageTest, PortInfoByWhatTheCagesHold)
{
    const Speed &last = f.speeds.back(), &first = f.speeds.front();
    for (uint32_t c = 0; c < f.cages(); ++c) {
        EXPECT_EQ(cvn_np_port_info_from_subslot_ifsubinst(0, c), f.dummy) << c;
        for (uint32_t t : {0x10000u, 0x10001u, 0x10002u, 0x10003u, kDornikT, 0x10008u, ~0u}) {
            const uint32_t ptype = t == 0x10002 ? 1 : t == 0x10001 || t == 0x10003 ? 3 : 4;
            EXPECT_EQ(aux_cvn_np_port_info_get(0, c, t), Knows(t) ? f.pi_array[ptype] : f.dummy);
        }
        Plug(0, c, last.ifsub);
        EXPECT_EQ(cvn_np_port_info_from_subslot_ifsubinst(0, c), f.pi_array[last.ptype]);
        Plug(0, c, kFails);
        EXPECT_EQ(cvn_np_port_info_from_subslot_ifsubinst(0, c), f.dummy);
    }
    // slot 4: brisca and fenna scan for the first cage that holds a module
    cvn_np_sim_reset();
    const bool scan = f.slot4 == kScan;
    const port_info *fixed = f.pi_array[f.slot4 == kComboAlways ? 2 : 4];
    EXPECT_EQ(cvn_np_port_info_get(), scan ? f.dummy : fixed);
    EXPECT_EQ(cvn_np_sim_ifsubsys_queries(), scan ? f.cages() : 0u);
    for (const Speed &s : f.speeds) {
        cvn_np_sim_reset();
        Plug(0, 0, kFails);
        Plug(0, f.cages() - 1, s.ifsub);
        EXPECT_EQ(cvn_np_port_info_get(), scan ? f.pi_array[s.ptype] : fixed);
        Plug(0, 1, first.ifsub);
        EXPECT_EQ(cvn_np_port_info_get(), scan ? f.pi_array[first.ptype] : fixed);
        EXPECT_EQ(cvn_np_sim_ifsubsys_queries(), scan ? f.cages() + 2 : 0u);
    }
}

// what an NP's cages hold -> its NP-local port count and first port
TEST_P(CageTest, LocalPortCountsAndFirstPorts)
{
    const uint32_t empty = f.quiet_fail ? 0 : kInvalid;
    for (uint32_t n = 0; n < f.nps(); ++n) {
        const uint32_t c0 = n * f.cpn(), c1 = c0 + f.cpn() - 1, first = 16 * c0;
        EXPECT_EQ(cvn_np_info_num_local_ports(n), 0u);
        EXPECT_RUN(cvn_np_first_front_port_on_np(n, o), empty);
        EXPECT_RUN(cvn_np_first_fplate_porttype_on_np(n, o, o1), empty);
        for (const Speed &s : f.speeds) {
            const uint32_t per_call = s.ppc * (f.per_np40 ? f.cpn() : 1);
            EXPECT_EQ(aux_cvn_np_info_num_local_ports(0, n, s.ifsub), per_call);
            Plug(0, c1, s.ifsub); // the last cage of the NP only
            EXPECT_EQ(cvn_np_info_num_local_ports(n), s.ppc);
            // the NP's block starts at its first cage, whichever cage has the type
            EXPECT_RUN(cvn_np_first_front_port_on_np(n, o), 0, first);
            EXPECT_RUN(cvn_np_first_fplate_porttype_on_np(n, o, o1), 0, s.ptype, first);
            EXPECT_RUN(aux_cvn_np_first_port_on_np(n, 9, s.ifsub, 0, o1, o2), 0, S, first, s.ptype);
            Plug(0, c0, s.ifsub);
            EXPECT_EQ(cvn_np_info_num_local_ports(n), s.ppc * f.cpn());
            Plug(0, c0, kFails); // a failed cage counts nothing
            EXPECT_EQ(cvn_np_info_num_local_ports(n), f.cpn() == 1 ? 0 : s.ppc);
            cvn_np_sim_reset();
        }
        for (uint32_t t : {0x10000u, 0x10001u, 0x10003u, kDornikT, ~0u, 0x77u})
            if (!Knows(t)) { // a type the family does not map
                EXPECT_RUN(aux_cvn_np_first_port_on_np(n, 0, t, o, o1, o2), kInvalid);
            }
        EXPECT_RUN(aux_cvn_np_first_port_on_np(f.nps(), 0, f.speeds[0].ifsub, o, o1, o2), kInvalid);
    }
}

// A failed cage query: returned by 11, 12, 16, 18 (brisca_4p: 16 and 18 go
// on as if empty; dornik: 8-10 answer 0); nothing written.
TEST_P(CageTest, FailedQueries)
{
    PlugAll(kFails);
    const V failed = L(kFailStatus);
    // slot 4 with no cage answering: the dummy list where it scans, its fixed list otherwise
    EXPECT_EQ(cvn_np_port_info_get(),
              f.slot4 == kScan ? f.dummy : f.pi_array[f.slot4 == kComboAlways ? 2 : 4]);
    EXPECT_EQ(RUN(aux_cvn_np_front_port_to_ifsubsys(0x10, o, o1, o2)), failed);
    if (!f.quiet_fail) {
        EXPECT_EQ(RUN(cvn_np_front_port_to_face_plate_port(0x10, o, o1)), failed);
        EXPECT_EQ(RUN(cvn_np_front_port_mapping_info(0x10, o, o1, o2, o3)), failed);
    }
    for (uint32_t n = 0; n < f.nps(); ++n) {
        const V got = f.quiet_fail ? L(0) : failed;
        EXPECT_EQ(RUN(cvn_np_first_front_port_on_np(n, o)), got);
        EXPECT_EQ(RUN(cvn_np_first_fplate_porttype_on_np(n, o, o1)), got);
        if (f.dornik) {
            EXPECT_EQ(ToNp(16 * n), L(0, 0, 0));
        }
    }
    // a query that succeeds: what the platform is asked and what comes back
    const uint32_t c = 5 % f.cages();
    Plug(0, c, 0x1234);
    EXPECT_RUN(aux_cvn_np_front_port_to_ifsubsys(16 * c + 9, o, o1, o2), 0, 0, c, 0x1234);
    EXPECT_RUN(aux_cvn_np_front_port_to_ifsubsys(16 * c, nullptr, o1, nullptr), 0, S, c);
}

TEST_P(CageTest, FrontPortEncoding)
{
    const bool empty45 = f.slot45_max < 0;
    for (uint32_t v = 0; v < 256; ++v) {
        const uint32_t w = 0x300 | v, cage = v >> 4;
        EXPECT_EQ(L(cvn_np_lib_set_subslot_phy_port(3, 0x500 | v), cvn_np_lib_get_subslot(v),
                    cvn_np_lib_get_subslot_port(w), cvn_np_lib_get_port(w),
                    cvn_np_lib_get_ifsubinst(w), cvn_np_lib_get_ifsubinst_port(w)),
                  L(v, 0, v, v, cage, v & 15));
        const uint32_t want = empty45 ? kInvalid : cage <= uint32_t(f.slot45_max) ? 0 : 22;
        EXPECT_RUN(aux_cvn_np_front_port_to_ifsubinst(v, o), want, empty45 ? S : cage);
    }
    EXPECT_EQ(aux_cvn_np_front_port_to_ifsubinst(0, nullptr), empty45 ? kInvalid : 22);
    EXPECT_EQ(cvn_np_lib_set_subslot_ifsubinst_ifsubinst_port(2, 0x13, 0x25), 0x35u);
    for (uint32_t c = 0; c < 16; ++c)
        for (uint32_t p = 0; p < 17; ++p) { // port 16 carries into the cage bits
            const uint32_t other = f.dornik ? 255 : 16 * c + p;
            V got;
            for (uint32_t code : {4, 1, 3, 0, 2, 5, 8})
                got.push_back(cvn_np_lib_get_phys_port_tuple45(code, code % 2, c, p));
            EXPECT_EQ(got, V({16 * c, other, other, 255, 255, 255, 255}));
        }
}

// NP-local ports no entry carries, NP ids past the card: outputs untouched.
TEST_P(CageTest, LocalPortsWithoutAnEntry)
{
    std::vector<bool> used(256, false);
    for (const Speed &s : f.speeds)
        for (uint32_t c = 0; c < f.cages(); ++c)
            for (uint32_t p = 0; p < s.ppc; ++p)
                used[NpPort(f, c, s.ptype, p)] = true;
    const bool limit254 = !f.alt40 && !f.dornik; // fenna
    for (uint32_t n = 0; n < f.nps(); ++n)
        for (uint32_t npp = 0; npp < 300; ++npp) {
            if (npp < 256 && used[npp])
                continue;
            const V want = L((npp > 254 && limit254) ? kInvalid : 0);
            EXPECT_EQ(RUN(cvn_np_info_to_fplate_porttype(n, npp, o, o1)), want) << npp;
            EXPECT_EQ(RUN(cvn_np_info_to_front_port(n, npp, o)), want) << npp;
        }
    const uint32_t npp = NpPort(f, 0, f.speeds[0].ptype, 0);
    EXPECT_RUN(cvn_np_info_to_fplate_porttype(f.nps(), npp, o, o1), kInvalid);
    EXPECT_RUN(cvn_np_info_to_front_port(f.nps() + 7, npp, o), kInvalid);
    // slot 44 walks at most `count` entries and stops at the first match
    const Speed &s = f.speeds.back(); // its entry 1: cage 1 / ppc, port 1 % ppc
    const uint32_t c1 = 1 / s.ppc, p1 = 1 % s.ppc, second = NpPort(f, c1, s.ptype, p1);
    Map m = s.np_map;
    EXPECT_RUN((aux_np_port_to_mapping_info(m, second, 1, o, o1, o2), 0u), 0);
    EXPECT_RUN((aux_np_port_to_mapping_info(m, second, 2, o, 0, o2), 0u), 0, 16 * c1 + p1, S,
               s.ptype);
    // the first of several matches; brisca_4p's NULL room is passed over
    const uint32_t again = NpPort(f, 0, s.ptype, 0);
    EXPECT_RUN((aux_np_port_to_mapping_info(m, again, s.np_map_room, 0, o, 0), 0u), 0, 0);
    EXPECT_RUN((aux_np_port_to_mapping_info(m, 4000, 2, o, o1, o2), 0u), 0);
    EXPECT_RUN((aux_np_port_to_mapping_info(nullptr, second, 2, o, o, o), 0u), 0);
    EXPECT_EQ(cvn_np_sim_ifsubsys_queries(), 0u);
}

INSTANTIATE_TEST_SUITE_P(CageCards, CageTest, ::testing::ValuesIn(Families()),
                         [](const auto &info) { return std::string(info.param.name); });

// ---- each family's own differences ----------------------------------------

template <uint32_t kType> struct On : cvn_test::LibTest, OutBuf {
    On() : LibTest(kType) {}
};
using Brisca = On<0x3D02B0>;
using Fenna = On<0x3D026C>;
using Dornik = On<0x3D02C6>;

TEST_F(Brisca, CountsLocalPortsPerCage)
{
    EXPECT_EQ(aux_cvn_np_info_num_local_ports(0, 3, 0x10003), 1u);
    Plug(0, 6, CVN_NP_IFSUB_TYPE_10GE);
    Plug(0, 7, CVN_NP_IFSUB_TYPE_40GE_ALT);
    EXPECT_EQ(cvn_np_info_num_local_ports(3), 11u);
    Plug(0, 6, 0x77); // slot 16 takes the first type it finds
    EXPECT_RUN(cvn_np_first_front_port_on_np(3, o), kInvalid);
    EXPECT_RUN(aux_cvn_np_first_port_on_np(1, 0, 0x10003, o, o1, o2), 0, 0x20, 0x20, 3);
}

// An inner step follows the operation table: a replaced slot 43 answers slot
// 19, a replaced slot 44 answers slot 14.
uint32_t MarkerNp(uint32_t, uint32_t, uint32_t, uint32_t *np, uint32_t *, uint32_t *)
{
    *np = 77;
    return 0;
}
void MarkerFront(const port_mapping_entry *const *, uint32_t, uint32_t, uint32_t *front, uint32_t *,
                 uint32_t *)
{
    *front = 0x77;
}
TEST_F(Brisca, InnerStepFollowsTheTable)
{
    const auto own = cvn_np_api_brisca.aux_cvn_faceplate_to_mapping_info;
    cvn_np_api_brisca.aux_cvn_faceplate_to_mapping_info = MarkerNp;
    EXPECT_EQ(cvn_faceplate_porttype_to_np(CVN_NP_PORT_TYPE_10GE, 0x79), 77u);
    cvn_np_api_brisca.aux_cvn_faceplate_to_mapping_info = own;
    EXPECT_EQ(cvn_faceplate_porttype_to_np(CVN_NP_PORT_TYPE_10GE, 0x79), 3u);
    const auto search = cvn_np_api_brisca.aux_np_port_to_mapping_info;
    cvn_np_api_brisca.aux_np_port_to_mapping_info = MarkerFront;
    EXPECT_RUN(cvn_np_info_to_front_port(0, 204, o), 0, 0x77);
    cvn_np_api_brisca.aux_np_port_to_mapping_info = search;
    EXPECT_RUN(cvn_np_info_to_front_port(0, 204, o), 0, 0);
}

// Slots 14, 15, 19 and 21 answer from compile-time tables only while every
// step and current record is the family's own: each replaced one is obeyed.
TEST_F(Brisca, ReplacedStepsAndRecordsAreObeyed)
{
    cvn_np_api &t = cvn_np_api_brisca;
    Swap(
        t.cvn_np_how_many, +[] { return 0u; },
        [&] { EXPECT_RUN(cvn_np_info_to_front_port(0, 204, o), kInvalid); });
    Swap(
        t.aux_cvn_np_info_to_mapping_info,
        +[](uint32_t, uint32_t, uint32_t, uint32_t *f, uint32_t *, uint32_t *) { *f = 0x66; },
        [&] { EXPECT_RUN(cvn_np_info_to_front_port(0, 204, o), 0, 0x66); });
    Swap(
        t.cvn_np_info_to_fplate_porttype,
        +[](uint32_t, uint32_t, uint32_t *, uint32_t *) { return 9u; },
        [&] { EXPECT_RUN(cvn_np_info_to_front_port(0, 204, o), 9); });
    Swap(brisca_card_np_port_map_10ge, np_local_port_map_brisca_10g + 10,
         [&] { EXPECT_RUN(cvn_np_info_to_fplate_porttype(0, 204, o, o1), 0, 0x20, 1); });
    // brisca_4p's record: four cages; NP 1's block is NP 0's second cage.
    Swap(brisca_card_np_info, &np_info_brisca_4p, [&] {
        EXPECT_RUN(cvn_np_info_to_front_port(1, 204, o), 0);
        EXPECT_DEATH(cvn_faceplate_porttype_to_np(CVN_NP_PORT_TYPE_10GE, 0x79), "num_cage");
    });
    Swap(
        t.cvn_np_lib_get_port, +[](uint32_t) { return 0u; },
        [&] { EXPECT_EQ(cvn_faceplate_porttype_to_phys_port(CVN_NP_PORT_TYPE_10GE, 0x79), 0u); });
    Swap(
        t.cvn_np_lib_get_ifsubinst, +[](uint32_t) { return 9u; },
        [&] {
            EXPECT_DEATH(cvn_faceplate_porttype_to_np(CVN_NP_PORT_TYPE_10GE, 0x79), "num_cage");
        });
    Plug(0, 0, CVN_NP_IFSUB_TYPE_10GE);
    Swap(brisca_card_phys_map_10ge, phys_front_port_map_brisca_10g + 1,
         [&] { EXPECT_EQ(cvn_np_front_port_to_np_port(0x00), 205u); });
    Swap(brisca_card_fplate_map_10ge, fplate_port_map_brisca_10g + 1,
         [&] { EXPECT_EQ(cvn_faceplate_porttype_to_phys_port(CVN_NP_PORT_TYPE_10GE, 0), 1u); });
    // With `initialized` cleared, slot 19 called from its table takes its
    // steps through the public functions, the first of which initialises.
    initialized = 0;
    EXPECT_EQ(t.cvn_faceplate_porttype_to_np(CVN_NP_PORT_TYPE_10GE, 0x79), 3u);
    EXPECT_EQ(cvn_np_sim_card_type_queries(), 1u);
    EXPECT_EQ(initialized, 1);
}

TEST_F(Fenna, KnowsThreeTypes)
{
    EXPECT_EQ(cvn_np_api_fenna.aux_cvn_np_front_port_to_ifsubinst, nullptr);
    Plug(0, 2, CVN_NP_IFSUB_TYPE_40GE_ALT); // a type, so slot 4 stops there
    Plug(0, 3, CVN_NP_IFSUB_TYPE_10GE);
    EXPECT_EQ(cvn_np_port_info_get(), fenna_dummy_port_info);
    EXPECT_RUN(aux_cvn_np_first_port_on_np(1, 0, 0x10003, o, o1, o2), kInvalid);
    EXPECT_RUN((aux_cvn_np_info_to_mapping_info_fenna(1, 195, 0x10002, o, 0, o2), 0u), 0, 51, S, 1);
    EXPECT_RUN(
        (aux_np_port_to_mapping_info_fenna(np_local_port_map_fenna_40g + 8, 97, 4, o, o1, 0), 0u),
        0, 0x51, 0x51);
    Swap(
        cvn_np_api_fenna.aux_cvn_np_info_to_mapping_info,
        +[](uint32_t, uint32_t, uint32_t, uint32_t *f, uint32_t *, uint32_t *) { *f = 0x66; },
        [&] { // slot 15's own steps keep the 254 limit
            EXPECT_RUN(cvn_np_info_to_fplate_porttype(0, 254, o, o1), 0, 0x66);
            EXPECT_RUN(cvn_np_info_to_fplate_porttype(0, 255, o, o1), kInvalid);
        });
}

TEST_F(Dornik, SizeFromTheCardType)
{
    for (uint32_t t : {0x3D02C6u, 0x3D02C3u, 0x3D02C2u, 0x3D0267u}) {
        cardtype = t;
        ASSERT_EQ(cvn_np_lib_init(0x3D02C2), 0u); // the size follows cardtype
        const bool full = t != 0x3D02C2 && t != 0x3D0267;
        EXPECT_EQ(P({card_np_api, dornik_card_np_info, dornik_card_port_info}),
                  full ? P({&cvn_np_api_dornik, &np_info_dornik, port_info_dornik})
                       : P({&cvn_np_api_dornik, &np_info_dornik_lite, port_info_dornik_lite}));
        EXPECT_EQ(L(cvn_np_how_many(), dornik_card_subslot_info.max_of_ifsubsys_per_subslot),
                  full ? L(6, 12) : L(2, 4));
    }
    cardtype = 0x3D02C6;
    ASSERT_EQ(cvn_np_lib_init(0x3D02C6), 0u);
    Plug(0, 5, kDornikT);
    Plug(0, 4, CVN_NP_IFSUB_TYPE_NONE);
    EXPECT_EQ(cvn_np_info_num_local_ports(2), 1u); // nothing installed adds nothing
    EXPECT_RUN(cvn_np_first_front_port_on_np(2, o), 0, 0x40);
}

} // namespace
