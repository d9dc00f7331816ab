// The cage cards (brisca, brisca_4p, fenna, dornik full and lite) as one suite:
// a row of facts per card written from the wiring rules, the behaviour they
// share run over every row, then each family's own differences.
#include <array>
#include <cstring>
#include <iterator>
#include <vector>

#include "test_support.h"

namespace {

using cvn_test::kFailStatus;
using cvn_test::kInvalid;
using cvn_test::kSentinel;
using Entry = port_mapping_entry;
using Map = const Entry *const *;

constexpr uint32_t kDornikT = CVN_NP_IFSUB_TYPE_DORNIK_100GE;

// One speed of a card: what the platform reports, the port type, ports per
// cage, and the exported tables and current-record pointers of the speed.
struct Speed {
    uint32_t ifsub, ptype, ppc;
    const Entry *table;
    Map np_map, fp_map, ph_map;
    size_t np_map_room;
    const int32_t *index;
    size_t index_size;
    const Map *cur_ph, *cur_fp, *cur_np;
    const port_info *list; // the speed's list (entry ptype of the array)
};

enum Slot4 { kScan, kComboAlways, k100Always };

struct Family {
    const char *name;
    uint32_t card_type;
    uint32_t table_cages; // cages of the mapping tables
    std::array<uint16_t, 23> info;
    const np_info *info_rec;
    const port_info *const *pi_array;
    const np_info *const *cur_info;
    const port_info *const *const *cur_pi;
    const port_info *dummy;
    const card_version *version;
    const subslot_info *ssi;
    std::array<uint16_t, 4> ssi_expected;
    std::vector<Speed> speeds;
    Slot4 slot4;
    bool alt40;      // 0x10003 is served by the 40GE tables
    bool per_np40;   // slot 40 counts an NP's two cages
    bool quiet_fail; // slots 16 and 18 treat a failed query as an empty cage
    int slot45_max;  // highest cage slot 45 accepts; -1: the slot is empty
    bool dornik;
    uint32_t cages() const { return info[5]; }
    uint32_t nps() const { return info[3]; }
    uint32_t cpn() const { return info[6]; }
};

// clang-format off
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

class CageTest : public cvn_test::LibTest, public ::testing::WithParamInterface<Family> {
  protected:
    CageTest() : LibTest(0) {}
    void SetUp() override
    {
        LibTest::SetUp();
        cardtype = F().card_type;
        ASSERT_EQ(cvn_np_lib_init(F().card_type), 0u);
    }
    static const Family &F() { return GetParam(); }
    void PlugAll(uint32_t type)
    {
        for (uint32_t c = 0; c < F().cages(); ++c)
            Plug(0, c, type);
    }
};

void ExpectList(const port_info *list, uint32_t count, uint32_t type)
{
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list[0].num_ports, count);
    EXPECT_EQ(list[0].port_type, type);
    EXPECT_EQ(list[1].num_ports, 0u);
    EXPECT_EQ(list[1].port_type, CVN_NP_PORT_TYPE_END);
}

TEST_P(CageTest, ExportedTablesFollowTheWiring)
{
    const Family &f = F();
    std::array<uint16_t, 23> info{};
    static_assert(sizeof(np_info) == sizeof(info));
    std::memcpy(info.data(), f.info_rec, sizeof info);
    EXPECT_EQ(info, f.info);
    EXPECT_EQ(*f.cur_info, f.info_rec);
    EXPECT_EQ(*f.cur_pi, f.pi_array);
    EXPECT_EQ(f.version->ver_major, 5u);
    EXPECT_EQ(f.version->ver_minor, 99u);
    EXPECT_EQ((std::array<uint16_t, 4>{f.ssi->num_of_subslots, f.ssi->max_ports_per_subslot,
                                       f.ssi->max_of_ifsubsys_per_subslot, f.ssi->spare}),
              f.ssi_expected);
    EXPECT_EQ(f.dummy[0].num_ports, 0u);
    EXPECT_EQ(f.dummy[0].port_type, CVN_NP_PORT_TYPE_END);
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
        SCOPED_TRACE(s.ptype);
        if (s.list != nullptr) {
            EXPECT_EQ(f.pi_array[s.ptype], s.list);
            ExpectList(s.list, s.ppc, s.ptype);
        }
        EXPECT_EQ(*s.cur_ph, s.ph_map);
        EXPECT_EQ(*s.cur_fp, s.fp_map);
        EXPECT_EQ(*s.cur_np, s.np_map);
        const uint32_t n = f.table_cages * s.ppc;
        for (uint32_t c = 0; c < f.table_cages; ++c)
            for (uint32_t p = 0; p < s.ppc; ++p) {
                const Entry &e = s.table[c * s.ppc + p];
                const uint32_t front = 16 * c + p;
                EXPECT_EQ(e.phys_front_port, front);
                EXPECT_EQ(e.np, c / f.cpn()) << front;
                EXPECT_EQ(e.np_port, NpPort(f, c, s.ptype, p)) << front;
                EXPECT_EQ(e.fplate_port, front);
                EXPECT_EQ(e.port_type, s.ptype) << front;
            }
        const Entry &end = s.table[n];
        EXPECT_EQ(end.phys_front_port, 0xFFu);
        EXPECT_EQ(end.np, 0xFFu);
        EXPECT_EQ(end.np_port, 0xFFu);
        EXPECT_EQ(end.fplate_port, 0xFFu);
        EXPECT_EQ(end.port_type, 0xFFu);
        for (uint32_t i = 0; i < s.np_map_room; ++i)
            EXPECT_EQ(s.np_map[i], i < n ? &s.table[i] : nullptr) << i;
        for (uint32_t i = 0; i < n; ++i) {
            EXPECT_EQ(s.fp_map[i], &s.table[i]) << i;
            EXPECT_EQ(s.ph_map[i], &s.table[i]) << i;
        }
        ASSERT_EQ(s.index_size, 16 * f.table_cages);
        for (uint32_t i = 0; i < s.index_size; ++i) {
            const uint32_t c = i / 16, p = i % 16;
            EXPECT_EQ(s.index[i], p < s.ppc ? static_cast<int32_t>(c * s.ppc + p) : 255) << i;
        }
    }
}

TEST_P(CageTest, CardSummary)
{
    const Family &f = F();
    EXPECT_EQ(cvn_np_version_get(), f.version);
    EXPECT_EQ(cvn_max_mtu(), 9216u);
    EXPECT_EQ(cvn_np_how_many(), f.nps());
    EXPECT_EQ(cvn_np_chip_how_many(), f.nps());
    EXPECT_EQ(cvn_np_subslot_info_get(), f.ssi);
    ExpectList(cvn_np_port_info_subslot(0), f.cages(), CVN_NP_PORT_TYPE_COMBO);
    EXPECT_EQ(cvn_np_set_if_subsys_type(3, 7), 0u);
    EXPECT_EQ(cvn_np_to_cpu_port_map(5), 3u);
    EXPECT_EQ(cvn_np_first_phys_port_on_np(0, nullptr), kInvalid);
    uint32_t count = kSentinel, first = kSentinel;
    EXPECT_EQ(cvn_np_subslot_to_np_list(9, &count, nullptr), kInvalid);
    EXPECT_EQ(cvn_np_subslot_to_np_list(9, nullptr, &first), kInvalid);
    EXPECT_EQ(count, kSentinel);
    EXPECT_EQ(first, kSentinel);
    EXPECT_EQ(cvn_np_subslot_to_np_list(9, &count, &first), 0u);
    EXPECT_EQ(count, f.nps());
    EXPECT_EQ(first, 0u);
    for (uint32_t n = 0; n < f.nps(); ++n) {
        EXPECT_EQ(cvn_np_complex_to_subslot(n), 0u);
        EXPECT_EQ(cvn_np_complex_to_np(n, 0), n);
        EXPECT_EQ(cvn_np_complex_to_np(n, 1), n);
        count = first = kSentinel;
        EXPECT_EQ(cvn_np_complex_to_subslot_list(n, nullptr, &first), 0u);
        EXPECT_EQ(first, kSentinel);
        EXPECT_EQ(cvn_np_complex_to_subslot_list(n, &count, nullptr), 0u);
        EXPECT_EQ(count, 1u);
        count = kSentinel;
        EXPECT_EQ(cvn_np_complex_to_subslot_list(n, &count, &first), 0u);
        EXPECT_EQ(count, 1u);
        EXPECT_EQ(first, 0u);
    }
    EXPECT_EQ(cvn_np_sim_ifsubsys_queries(), 0u);
}

// Every front port of every speed, both ways, with every cage running it.
TEST_P(CageTest, EveryPortOfEverySpeed)
{
    const Family &f = F();
    for (const Speed &s : f.speeds) {
        PlugAll(s.ifsub);
        for (uint32_t c = 0; c < f.cages(); ++c)
            for (uint32_t p = 0; p < s.ppc; ++p) {
                const uint32_t front = 16 * c + p, np = c / f.cpn();
                const uint32_t npp = NpPort(f, c, s.ptype, p);
                SCOPED_TRACE(front);
                EXPECT_EQ(cvn_np_lib_set_subslot_ifsubinst_ifsubinst_port(0, c, p), front);
                EXPECT_EQ(cvn_np_front_port_to_np(front), np);
                EXPECT_EQ(cvn_np_front_port_to_np_port(front), npp);
                EXPECT_EQ(cvn_np_front_port_to_port_type(front), s.ptype);
                uint32_t a = kSentinel, b = kSentinel, d = kSentinel, e = kSentinel;
                EXPECT_EQ(cvn_np_front_port_to_face_plate_port(front, &a, &b), 0u);
                EXPECT_EQ(a, front);
                EXPECT_EQ(b, s.ptype);
                EXPECT_EQ(cvn_np_front_port_to_face_plate_port(front, &a, nullptr), kInvalid);
                EXPECT_EQ(cvn_np_front_port_mapping_info(front, &a, &b, &d, &e), 0u);
                EXPECT_EQ((std::array<uint32_t, 4>{a, b, d, e}),
                          (std::array<uint32_t, 4>{np, npp, front, s.ptype}));
                a = b = d = e = kSentinel;
                EXPECT_EQ(cvn_np_front_port_mapping_info(front, nullptr, &b, nullptr, &e), 0u);
                EXPECT_EQ((std::array<uint32_t, 4>{a, b, d, e}),
                          (std::array<uint32_t, 4>{kSentinel, npp, kSentinel, s.ptype}));
                a = b = d = kSentinel;
                aux_cvn_np_front_port_to_mapping_info(c, front, s.ifsub, &a, nullptr, &b, nullptr);
                EXPECT_EQ(a, np);
                EXPECT_EQ(b, front);
                // NP-local port back to the front (read from the tables only)
                a = b = kSentinel;
                EXPECT_EQ(cvn_np_info_to_front_port(np, npp, &a), 0u);
                EXPECT_EQ(a, front);
                a = kSentinel;
                EXPECT_EQ(cvn_np_info_to_fplate_porttype(np, npp, &a, &b), 0u);
                EXPECT_EQ(a, front);
                EXPECT_EQ(b, s.ptype);
                a = b = d = kSentinel;
                aux_cvn_np_info_to_mapping_info(np, npp, s.ifsub, &a, &b, &d);
                EXPECT_EQ((std::array<uint32_t, 3>{a, b, d}),
                          (std::array<uint32_t, 3>{front, front, s.ptype}));
                // faceplate port to the NP
                EXPECT_EQ(cvn_faceplate_porttype_to_np(s.ptype, front), np);
                EXPECT_EQ(cvn_faceplate_porttype_to_np_port(s.ptype, front), npp);
                EXPECT_EQ(cvn_faceplate_porttype_to_phys_port(s.ptype, front), front);
                a = b = d = kSentinel;
                EXPECT_EQ(cvn_faceplate_porttype_mapping_info(s.ptype, front, &a, nullptr, &d), 0u);
                EXPECT_EQ((std::array<uint32_t, 3>{a, b, d}),
                          (std::array<uint32_t, 3>{np, kSentinel, front}));
                EXPECT_EQ(
                    aux_cvn_faceplate_to_mapping_info(c, front, s.ptype, nullptr, &b, nullptr), 0u);
                EXPECT_EQ(b, npp);
            }
        // the 40GE modules of the other kind run on the 40GE wiring
        if (s.ptype == 3 && f.alt40) {
            PlugAll(CVN_NP_IFSUB_TYPE_40GE_ALT);
            for (uint32_t c = 0; c < f.cages(); ++c)
                for (uint32_t p = 0; p < 2; ++p) {
                    EXPECT_EQ(cvn_np_front_port_to_np(16 * c + p), c / f.cpn());
                    EXPECT_EQ(cvn_np_front_port_to_np_port(16 * c + p), NpPort(f, c, 3, p));
                    EXPECT_EQ(cvn_np_front_port_to_port_type(16 * c + p), 3u);
                }
        }
    }
}

TEST_P(CageTest, PortInfoByWhatTheCagesHold)
{
    const Family &f = F();
    for (uint32_t c = 0; c < f.cages(); ++c) {
        EXPECT_EQ(cvn_np_port_info_from_subslot_ifsubinst(0, c), f.dummy) << c;
        for (uint32_t t = 0x10000; t <= 0x10003; ++t) {
            const bool known = !f.dornik && (t < 0x10003 || f.alt40);
            const uint32_t ptype = t == 0x10000 ? 4 : t == 0x10002 ? 1 : 3;
            EXPECT_EQ(aux_cvn_np_port_info_get(0, c, t), known ? f.pi_array[ptype] : f.dummy);
        }
        EXPECT_EQ(aux_cvn_np_port_info_get(0, c, kDornikT), f.dornik ? f.pi_array[4] : f.dummy);
        EXPECT_EQ(aux_cvn_np_port_info_get(0, c, CVN_NP_IFSUB_TYPE_NONE), f.dummy);
        Plug(0, c, f.speeds.back().ifsub);
        EXPECT_EQ(cvn_np_port_info_from_subslot_ifsubinst(0, c), f.pi_array[f.speeds.back().ptype]);
        Plug(0, c, kFails);
        EXPECT_EQ(cvn_np_port_info_from_subslot_ifsubinst(0, c), f.dummy);
    }
    // slot 4: the first cage that holds a module (brisca, fenna)
    cvn_np_sim_reset();
    const port_info *expect_empty =
        f.slot4 == kScan ? f.dummy : f.pi_array[f.slot4 == kComboAlways ? 2 : 4];
    EXPECT_EQ(cvn_np_port_info_get(), expect_empty);
    EXPECT_EQ(cvn_np_sim_ifsubsys_queries(), f.slot4 == kScan ? f.cages() : 0u);
    for (const Speed &s : f.speeds) {
        cvn_np_sim_reset();
        const uint32_t last = f.cages() - 1;
        Plug(0, 0, kFails);
        Plug(0, last, s.ifsub);
        const port_info *got = cvn_np_port_info_get();
        EXPECT_EQ(got, f.slot4 == kScan ? f.pi_array[s.ptype] : expect_empty);
        Plug(0, 1, f.speeds.front().ifsub);
        EXPECT_EQ(cvn_np_port_info_get(),
                  f.slot4 == kScan ? f.pi_array[f.speeds.front().ptype] : expect_empty);
        EXPECT_EQ(cvn_np_sim_ifsubsys_queries(), f.slot4 == kScan ? f.cages() + 2 : 0u);
    }
}

// cage types of an NP's cages -> its NP-local port count and first port
TEST_P(CageTest, LocalPortCountsAndFirstPorts)
{
    const Family &f = F();
    for (uint32_t n = 0; n < f.nps(); ++n) {
        const uint32_t c0 = n * f.cpn(), c1 = c0 + f.cpn() - 1;
        EXPECT_EQ(cvn_np_info_num_local_ports(n), 0u);
        uint32_t a = kSentinel, b = kSentinel;
        const uint32_t empty = f.quiet_fail ? 0 : kInvalid;
        EXPECT_EQ(cvn_np_first_front_port_on_np(n, &a), empty);
        EXPECT_EQ(cvn_np_first_fplate_porttype_on_np(n, &a, &b), empty);
        EXPECT_EQ(a, kSentinel);
        EXPECT_EQ(b, kSentinel);
        for (const Speed &s : f.speeds) {
            const uint32_t per_cage = s.ppc * (f.per_np40 ? f.cpn() : 1);
            EXPECT_EQ(aux_cvn_np_info_num_local_ports(0, n, s.ifsub), per_cage);
            Plug(0, c1, s.ifsub); // the last cage of the NP only
            EXPECT_EQ(cvn_np_info_num_local_ports(n), s.ppc);
            const uint32_t first = 16 * c0; // the NP's block starts at its first cage
            a = b = kSentinel;
            EXPECT_EQ(cvn_np_first_front_port_on_np(n, &a), 0u);
            EXPECT_EQ(a, first);
            a = kSentinel;
            EXPECT_EQ(cvn_np_first_fplate_porttype_on_np(n, &b, &a), 0u);
            EXPECT_EQ(a, first);
            EXPECT_EQ(b, s.ptype);
            uint32_t d = kSentinel;
            a = b = kSentinel;
            EXPECT_EQ(aux_cvn_np_first_port_on_np(n, 9, s.ifsub, &a, &b, &d), 0u);
            EXPECT_EQ((std::array<uint32_t, 3>{a, b, d}),
                      (std::array<uint32_t, 3>{first, first, s.ptype}));
            Plug(0, c0, s.ifsub);
            EXPECT_EQ(cvn_np_info_num_local_ports(n), s.ppc * f.cpn());
            if (f.cpn() == 2 && !f.dornik) { // a 100GE cage beside this one
                Plug(0, c0, 0x10000);
                EXPECT_EQ(cvn_np_info_num_local_ports(n), s.ppc + 1);
            }
            Plug(0, c0, kFails); // a failed cage counts nothing
            EXPECT_EQ(cvn_np_info_num_local_ports(n), f.cpn() == 1 ? 0 : s.ppc);
            cvn_np_sim_reset();
        }
        a = kSentinel;
        EXPECT_EQ(aux_cvn_np_first_port_on_np(n, 0, CVN_NP_IFSUB_TYPE_NONE, &a, &a, &a), kInvalid);
        EXPECT_EQ(a, kSentinel);
    }
    uint32_t a = kSentinel;
    EXPECT_EQ(aux_cvn_np_first_port_on_np(f.nps(), 0, f.speeds[0].ifsub, &a, &a, &a), kInvalid);
    EXPECT_EQ(a, kSentinel);
}

// A failed cage query: returned by 11, 12, 16, 18 (brisca_4p: 16 and 18 go
// on as if empty; dornik: 8-10 answer 0); nothing written.
TEST_P(CageTest, FailedQueries)
{
    const Family &f = F();
    for (uint32_t c = 0; c < f.cages(); ++c)
        Plug(0, c, kFails);
    uint32_t front = kSentinel, sub = kSentinel, cage = kSentinel, type = kSentinel;
    EXPECT_EQ(aux_cvn_np_front_port_to_ifsubsys(0x10, &sub, &cage, &type), kFailStatus);
    EXPECT_EQ((std::array<uint32_t, 3>{sub, cage, type}),
              (std::array<uint32_t, 3>{kSentinel, kSentinel, kSentinel}));
    uint32_t a = kSentinel, b = kSentinel, d = kSentinel, e = kSentinel;
    if (!f.quiet_fail) {
        EXPECT_EQ(cvn_np_front_port_to_face_plate_port(0x10, &a, &b), kFailStatus);
        EXPECT_EQ(cvn_np_front_port_mapping_info(0x10, &a, &b, &d, &e), kFailStatus);
    }
    for (uint32_t n = 0; n < f.nps(); ++n) {
        const uint32_t got = f.quiet_fail ? 0 : kFailStatus;
        EXPECT_EQ(cvn_np_first_front_port_on_np(n, &front), got);
        EXPECT_EQ(cvn_np_first_fplate_porttype_on_np(n, &a, &b), got);
        if (f.dornik) {
            EXPECT_EQ(cvn_np_front_port_to_np(16 * n), 0u);
            EXPECT_EQ(cvn_np_front_port_to_np_port(16 * n), 0u);
            EXPECT_EQ(cvn_np_front_port_to_port_type(16 * n), 0u);
        }
    }
    EXPECT_EQ((std::array<uint32_t, 5>{front, a, b, d, e}),
              (std::array<uint32_t, 5>{kSentinel, kSentinel, kSentinel, kSentinel, kSentinel}));
    // a query that succeeds: what the platform is asked and what comes back
    Plug(0, 5 % f.cages(), 0x1234);
    EXPECT_EQ(aux_cvn_np_front_port_to_ifsubsys(16 * (5 % f.cages()) + 9, &sub, nullptr, &type),
              0u);
    EXPECT_EQ(sub, 0u);
    EXPECT_EQ(type, 0x1234u);
    EXPECT_EQ(aux_cvn_np_front_port_to_ifsubsys(16 * (5 % f.cages()), nullptr, &cage, nullptr), 0u);
    EXPECT_EQ(cage, 5 % f.cages());
}

TEST_P(CageTest, FrontPortEncoding)
{
    const Family &f = F();
    for (uint32_t v = 0; v < 256; ++v) {
        EXPECT_EQ(cvn_np_lib_set_subslot_phy_port(3, 0x500 | v), v);
        EXPECT_EQ(cvn_np_lib_get_subslot(v), 0u);
        EXPECT_EQ(cvn_np_lib_get_subslot_port(0x300 | v), v);
        EXPECT_EQ(cvn_np_lib_get_port(0x300 | v), v);
        EXPECT_EQ(cvn_np_lib_get_ifsubinst(0x300 | v), v >> 4);
        EXPECT_EQ(cvn_np_lib_get_ifsubinst_port(0x300 | v), v & 15);
        uint32_t cage = kSentinel;
        const uint32_t want = f.slot45_max < 0                     ? kInvalid
                              : (v >> 4) <= uint32_t(f.slot45_max) ? 0
                                                                   : 22;
        EXPECT_EQ(aux_cvn_np_front_port_to_ifsubinst(v, &cage), want) << v;
        EXPECT_EQ(cage, f.slot45_max < 0 ? kSentinel : v >> 4);
    }
    EXPECT_EQ(aux_cvn_np_front_port_to_ifsubinst(0, nullptr), f.slot45_max < 0 ? kInvalid : 22);
    EXPECT_EQ(cvn_np_lib_set_subslot_ifsubinst_ifsubinst_port(2, 0x13, 0x25), 0x35u);
    for (uint32_t c = 0; c < 16; ++c)
        for (uint32_t p = 0; p < 17; ++p) {
            EXPECT_EQ(cvn_np_lib_get_phys_port_tuple45(4, 1, c, p), 16 * c);
            for (uint32_t code : {1u, 3u})
                EXPECT_EQ(cvn_np_lib_get_phys_port_tuple45(code, 1, c, p),
                          f.dornik ? 255 : 16 * c + p);
            for (uint32_t code : {0u, 2u, 5u, 8u})
                EXPECT_EQ(cvn_np_lib_get_phys_port_tuple45(code, 0, c, p), 255u);
        }
}

// NP-local ports no entry carries, NP ids past the card: outputs untouched.
TEST_P(CageTest, LocalPortsWithoutAnEntry)
{
    const Family &f = F();
    std::vector<bool> used(256, false);
    for (const Speed &s : f.speeds)
        for (uint32_t c = 0; c < f.cages(); ++c)
            for (uint32_t p = 0; p < s.ppc; ++p)
                used[NpPort(f, c, s.ptype, p)] = true;
    for (uint32_t n = 0; n < f.nps(); ++n)
        for (uint32_t npp = 0; npp < 300; ++npp) {
            if (npp < 256 && used[npp])
                continue;
            uint32_t a = kSentinel, b = kSentinel;
            const uint32_t want = (npp > 254 && !f.alt40 && !f.dornik) ? kInvalid : 0;
            EXPECT_EQ(cvn_np_info_to_fplate_porttype(n, npp, &a, &b), want) << npp;
            EXPECT_EQ(cvn_np_info_to_front_port(n, npp, &a), want) << npp;
            EXPECT_EQ(a, kSentinel);
            EXPECT_EQ(b, kSentinel);
        }
    uint32_t a = kSentinel, b = kSentinel;
    const uint32_t npp = NpPort(f, 0, f.speeds[0].ptype, 0);
    EXPECT_EQ(cvn_np_info_to_fplate_porttype(f.nps(), npp, &a, &b), kInvalid);
    EXPECT_EQ(cvn_np_info_to_front_port(f.nps() + 7, npp, &a), kInvalid);
    EXPECT_EQ(a & b, kSentinel);
    // a port of another NP's block is not found on this NP
    if (f.nps() > 1 && !f.dornik) {
        aux_cvn_np_info_to_mapping_info(1, 205, 0x10002, &a, &b, nullptr);
        EXPECT_EQ(a, 16u * f.cpn() + 1);
        a = b = kSentinel;
        aux_cvn_np_info_to_mapping_info(0, 205, 0x10000, &a, &b, &b);
        EXPECT_EQ(a & b, kSentinel);
    }
    EXPECT_EQ(cvn_np_sim_ifsubsys_queries(), 0u);
}

// Slot 44 walks at most `count` entries and stops at the first match.
TEST_P(CageTest, EntrySearch)
{
    const Family &f = F();
    const Speed &s = f.speeds.back(); // entry 1: cage 1 / ppc, port 1 % ppc
    const uint32_t c1 = 1 / s.ppc, p1 = 1 % s.ppc;
    Map m = s.np_map;
    uint32_t a = kSentinel, b = kSentinel, d = kSentinel;
    const uint32_t second = NpPort(f, c1, s.ptype, p1);
    aux_np_port_to_mapping_info(m, second, 1, &a, &b, &d);
    EXPECT_EQ((std::array<uint32_t, 3>{a, b, d}),
              (std::array<uint32_t, 3>{kSentinel, kSentinel, kSentinel}));
    aux_np_port_to_mapping_info(m, second, 2, &a, nullptr, &d);
    EXPECT_EQ((std::array<uint32_t, 3>{a, b, d}),
              (std::array<uint32_t, 3>{16 * c1 + p1, kSentinel, s.ptype}));
    // the first of several matches; brisca_4p's NULL room is passed over
    aux_np_port_to_mapping_info(m, NpPort(f, 0, s.ptype, 0), s.np_map_room, nullptr, &b, nullptr);
    EXPECT_EQ(b, 0u);
    a = kSentinel;
    aux_np_port_to_mapping_info(m, 4000, 2, &a, &a, &a);
    EXPECT_EQ(a, kSentinel);
}

INSTANTIATE_TEST_SUITE_P(CageCards, CageTest, ::testing::ValuesIn(Families()),
                         [](const auto &info) { return std::string(info.param.name); });

// ---- each family's own differences ----------------------------------------

class Card : public cvn_test::LibTest {
  protected:
    Card() : LibTest(0) {}
    static void Init(uint32_t type)
    {
        cardtype = type;
        ASSERT_EQ(cvn_np_lib_init(type), 0u);
    }
};

TEST_F(Card, CardTypesSelectTheFamilies)
{
    struct Range {
        uint32_t lo, hi;
        const char *name;
    };
    for (const Range &r :
         {Range{0x3D026D, 0x3D0276, "brisca"}, Range{0x3D02AA, 0x3D02B3, "brisca"},
          Range{0x3D02C4, 0x3D02C5, "brisca"}, Range{0x3D0278, 0x3D0281, "brisca_4p"},
          Range{0x3D02B4, 0x3D02BD, "brisca_4p"}, Range{0x3D0267, 0x3D026C, "fenna"},
          Range{0x3D02C2, 0x3D02C3, "dornik"}, Range{0x3D02C6, 0x3D02C6, "dornik"}})
        for (uint32_t t = r.lo; t <= r.hi; ++t)
            EXPECT_STREQ(cvn_np_card_family(t), r.name) << std::hex << t;
}

TEST_F(Card, BriscaCountsLocalPortsPerCage)
{
    Init(0x3D02B0);
    EXPECT_EQ(card_np_api, &cvn_np_api_brisca);
    EXPECT_EQ(aux_cvn_np_info_num_local_ports(0, 3, 0x10003), 1u);
    Plug(0, 6, CVN_NP_IFSUB_TYPE_10GE);
    Plug(0, 7, CVN_NP_IFSUB_TYPE_40GE_ALT);
    EXPECT_EQ(cvn_np_info_num_local_ports(3), 11u);
    uint32_t f = 0;
    EXPECT_EQ(cvn_np_first_front_port_on_np(3, &f), 0u);
    EXPECT_EQ(f, 0x60u);
    Plug(0, 6, 0x77); // slot 16 takes the first type it finds
    EXPECT_EQ(cvn_np_first_front_port_on_np(3, &f), kInvalid);
    aux_cvn_np_first_port_on_np(1, 0, 0x10003, &f, nullptr, nullptr);
    EXPECT_EQ(f, 0x20u);
    EXPECT_EQ(cvn_np_info_to_fplate_porttype(2, 150, &f, &f), 0u); // no 100GE port 150
    EXPECT_EQ(f, 0x20u);
}

TEST_F(Card, Brisca4pAnswersWithoutAsking)
{
    Init(0x3D02BD);
    EXPECT_EQ(card_np_api, &cvn_np_api_brisca_4p);
    Plug(0, 0, CVN_NP_IFSUB_TYPE_10GE);
    EXPECT_EQ(cvn_np_port_info_get(), port_info_brisca_4p_combo);
    EXPECT_EQ(cvn_np_sim_ifsubsys_queries(), 0u);
    Plug(0, 1, kFails);
    Plug(0, 2, CVN_NP_IFSUB_TYPE_40GE);
    uint32_t f = kSentinel;
    EXPECT_EQ(cvn_np_first_front_port_on_np(1, &f), 0u);
    EXPECT_EQ(f, kSentinel);
    EXPECT_EQ(cvn_np_first_front_port_on_np(2, &f), 0u);
    EXPECT_EQ(f, 0x20u);
}

TEST_F(Card, FennaKnowsThreeTypes)
{
    Init(0x3D026C);
    EXPECT_EQ(card_np_api, &cvn_np_api_fenna);
    EXPECT_EQ(cvn_np_api_fenna.aux_cvn_np_front_port_to_ifsubinst, nullptr);
    Plug(0, 2, CVN_NP_IFSUB_TYPE_40GE_ALT); // a type, so slot 4 stops there
    Plug(0, 3, CVN_NP_IFSUB_TYPE_10GE);
    EXPECT_EQ(cvn_np_port_info_get(), fenna_dummy_port_info);
    uint32_t f = kSentinel;
    EXPECT_EQ(aux_cvn_np_first_port_on_np(1, 0, 0x10003, &f, &f, &f), kInvalid);
    EXPECT_EQ(cvn_np_first_front_port_on_np(1, &f), kInvalid);
    EXPECT_EQ(f, kSentinel);
    EXPECT_EQ(cvn_np_info_to_fplate_porttype(1, 254, &f, &f), 0u);
    EXPECT_EQ(f, kSentinel);
    uint32_t a = kSentinel, b = kSentinel;
    aux_cvn_np_info_to_mapping_info_fenna(1, 195, 0x10002, &a, nullptr, &b);
    EXPECT_EQ(a, 51u);
    EXPECT_EQ(b, 1u);
    aux_np_port_to_mapping_info_fenna(np_local_port_map_fenna_40g + 8, 97, 4, &a, &b, nullptr);
    EXPECT_EQ(a, 0x51u);
    EXPECT_EQ(b, 0x51u);
}

TEST_F(Card, DornikSizeFromTheCardType)
{
    for (uint32_t t : {0x3D02C6u, 0x3D02C3u, 0x3D02C2u, 0x3D0267u}) {
        cardtype = t;
        ASSERT_EQ(cvn_np_lib_init(0x3D02C2), 0u); // the size follows cardtype
        const bool full = t != 0x3D02C2 && t != 0x3D0267;
        EXPECT_EQ(card_np_api, &cvn_np_api_dornik);
        EXPECT_EQ(dornik_card_np_info, full ? &np_info_dornik : &np_info_dornik_lite) << t;
        EXPECT_EQ(dornik_card_port_info, full ? port_info_dornik : port_info_dornik_lite);
        EXPECT_EQ(cvn_np_how_many(), full ? 6u : 2u);
        EXPECT_EQ(dornik_card_subslot_info.max_of_ifsubsys_per_subslot, full ? 12u : 4u);
    }
    Init(0x3D02C6);
    Plug(0, 5, kDornikT);
    Plug(0, 4, CVN_NP_IFSUB_TYPE_NONE);
    EXPECT_EQ(cvn_np_info_num_local_ports(2), 1u); // nothing installed adds nothing
    uint32_t f = kSentinel;
    EXPECT_EQ(cvn_np_first_front_port_on_np(2, &f), 0u);
    EXPECT_EQ(f, 0x40u);
    for (uint32_t t = 0x10000; t <= 0x10003; ++t)
        EXPECT_EQ(aux_cvn_np_first_port_on_np(0, 0, t, &f, &f, &f), kInvalid);
}

} // namespace
