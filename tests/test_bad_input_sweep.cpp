// Bad-input sweep: every public function of one card of each family, called
// with boundary values in each argument and with NULL and non-NULL outputs,
// with the platform reporting populated places, nothing, or failing queries.
// Each call runs in a forked child, which must either return (exit status 0,
// nothing on stderr) or die of SIGABRT after exactly one assertion report
// of the family (or of the core) naming one of the family's conditions.  A
// segmentation fault, a sanitizer report or any other end fails the sweep.
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <ostream>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "cvn_np_lib.h"
#include "cvn_np_lib_tables.h"
#include "cvn_np_sim.h"

namespace {

// What an argument means; its boundary values follow from that.
enum Kind : uint8_t {
    kFront,
    kNp,
    kNpPort,
    kCage,
    kSubslot,
    kIfsubType,
    kPortType,
    kFlag,
    kCardType,
    kEntries,
    kCount,
    kKinds
};

constexpr uint32_t kGeneric[] = {0, 1, 0x7F, 0xFF, 0x100, 0xFFFF, 0x10000, 0xFFFFFFFFu};

using Args = std::array<uint32_t, 4>;
using Invoke = void (*)(const Args &a, void *const *out);

// One public function: its argument kinds, the byte size of each output
// it takes, and a call with narrowed arguments.
struct Function {
    const char *name;
    std::vector<Kind> args;
    std::vector<size_t> outs;
    Invoke invoke;
};

uint32_t *U(void *p) { return static_cast<uint32_t *>(p); }
uint16_t W(uint32_t v) { return static_cast<uint16_t>(v); }
uint8_t B(uint32_t v) { return static_cast<uint8_t>(v); }

// The entry arrays slot 44 is swept with, by index; an index past them is NULL.
std::vector<std::pair<const port_mapping_entry *const *, uint32_t>> g_arrays;
const port_mapping_entry *const *EntriesOf(uint32_t i)
{
    return i < g_arrays.size() ? g_arrays[i].first : nullptr;
}

constexpr size_t k4 = sizeof(uint32_t);

const std::vector<Function> &Functions()
{
    static const std::vector<Function> functions = {
        {"cvn_np_lib_init",
         {kCardType},
         {},
         [](const Args &a, void *const *) { cvn_np_lib_init(a[0]); }},
        {"cvn_np_id_validate",
         {kNp},
         {1},
         [](const Args &a, void *const *o) {
             cvn_np_id_validate(a[0], static_cast<uint8_t *>(o[0]));
         }},
        {"cvn_np_unsupported", {}, {}, [](const Args &, void *const *) { cvn_np_unsupported(); }},
        {"cvn_np_version_get", {}, {}, [](const Args &, void *const *) { cvn_np_version_get(); }},
        {"cvn_max_mtu", {}, {}, [](const Args &, void *const *) { cvn_max_mtu(); }},
        {"cvn_np_how_many", {}, {}, [](const Args &, void *const *) { cvn_np_how_many(); }},
        {"cvn_np_chip_how_many",
         {},
         {},
         [](const Args &, void *const *) { cvn_np_chip_how_many(); }},
        {"cvn_np_port_info_get",
         {},
         {},
         [](const Args &, void *const *) { cvn_np_port_info_get(); }},
        {"cvn_np_subslot_info_get",
         {},
         {},
         [](const Args &, void *const *) { cvn_np_subslot_info_get(); }},
        {"cvn_np_port_info_subslot",
         {kSubslot},
         {},
         [](const Args &a, void *const *) { cvn_np_port_info_subslot(W(a[0])); }},
        {"cvn_np_port_info_from_subslot_ifsubinst",
         {kSubslot, kCage},
         {},
         [](const Args &a, void *const *) {
             cvn_np_port_info_from_subslot_ifsubinst(W(a[0]), W(a[1]));
         }},
        {"cvn_np_front_port_to_np",
         {kFront},
         {},
         [](const Args &a, void *const *) { cvn_np_front_port_to_np(a[0]); }},
        {"cvn_np_front_port_to_np_port",
         {kFront},
         {},
         [](const Args &a, void *const *) { cvn_np_front_port_to_np_port(a[0]); }},
        {"cvn_np_front_port_to_port_type",
         {kFront},
         {},
         [](const Args &a, void *const *) { cvn_np_front_port_to_port_type(a[0]); }},
        {"cvn_np_front_port_to_face_plate_port",
         {kFront},
         {k4, k4},
         [](const Args &a, void *const *o) {
             cvn_np_front_port_to_face_plate_port(a[0], U(o[0]), U(o[1]));
         }},
        {"cvn_np_front_port_mapping_info",
         {kFront},
         {k4, k4, k4, k4},
         [](const Args &a, void *const *o) {
             cvn_np_front_port_mapping_info(a[0], U(o[0]), U(o[1]), U(o[2]), U(o[3]));
         }},
        {"cvn_np_info_num_local_ports",
         {kNp},
         {},
         [](const Args &a, void *const *) { cvn_np_info_num_local_ports(a[0]); }},
        {"cvn_np_info_to_front_port",
         {kNp, kNpPort},
         {k4},
         [](const Args &a, void *const *o) { cvn_np_info_to_front_port(a[0], a[1], U(o[0])); }},
        {"cvn_np_info_to_fplate_porttype",
         {kNp, kNpPort},
         {k4, k4},
         [](const Args &a, void *const *o) {
             cvn_np_info_to_fplate_porttype(a[0], a[1], U(o[0]), U(o[1]));
         }},
        {"cvn_np_first_front_port_on_np",
         {kNp},
         {k4},
         [](const Args &a, void *const *o) { cvn_np_first_front_port_on_np(a[0], U(o[0])); }},
        {"cvn_np_first_phys_port_on_np",
         {kNp},
         {k4},
         [](const Args &a, void *const *o) { cvn_np_first_phys_port_on_np(a[0], U(o[0])); }},
        {"cvn_np_first_fplate_porttype_on_np",
         {kNp},
         {k4, k4},
         [](const Args &a, void *const *o) {
             cvn_np_first_fplate_porttype_on_np(a[0], U(o[0]), U(o[1]));
         }},
        {"cvn_faceplate_porttype_to_np",
         {kPortType, kFront},
         {},
         [](const Args &a, void *const *) { cvn_faceplate_porttype_to_np(a[0], a[1]); }},
        {"cvn_faceplate_porttype_to_np_port",
         {kPortType, kFront},
         {},
         [](const Args &a, void *const *) { cvn_faceplate_porttype_to_np_port(a[0], a[1]); }},
        {"cvn_faceplate_porttype_to_phys_port",
         {kPortType, kFront},
         {},
         [](const Args &a, void *const *) { cvn_faceplate_porttype_to_phys_port(a[0], a[1]); }},
        {"cvn_faceplate_porttype_mapping_info",
         {kPortType, kFront},
         {k4, k4, k4},
         [](const Args &a, void *const *o) {
             cvn_faceplate_porttype_mapping_info(a[0], a[1], U(o[0]), U(o[1]), U(o[2]));
         }},
        {"cvn_np_complex_to_subslot",
         {kNp},
         {},
         [](const Args &a, void *const *) { cvn_np_complex_to_subslot(B(a[0])); }},
        // The 1-slice card writes both of its subslots through first_subslot.
        {"cvn_np_complex_to_subslot_list",
         {kNp},
         {k4, 2 * k4},
         [](const Args &a, void *const *o) {
             cvn_np_complex_to_subslot_list(B(a[0]), U(o[0]), U(o[1]));
         }},
        {"cvn_np_complex_to_np",
         {kNp, kFlag},
         {},
         [](const Args &a, void *const *) { cvn_np_complex_to_np(B(a[0]), a[1]); }},
        {"cvn_np_set_if_subsys_type",
         {kCage, kIfsubType},
         {},
         [](const Args &a, void *const *) { cvn_np_set_if_subsys_type(a[0], W(a[1])); }},
        {"cvn_np_subslot_to_np_list",
         {kSubslot},
         {k4, k4},
         [](const Args &a, void *const *o) {
             cvn_np_subslot_to_np_list(B(a[0]), U(o[0]), U(o[1]));
         }},
        {"cvn_np_to_cpu_port_map",
         {kNp},
         {},
         [](const Args &a, void *const *) { cvn_np_to_cpu_port_map(W(a[0])); }},
        {"cvn_np_lib_set_subslot_phy_port",
         {kSubslot, kFront},
         {},
         [](const Args &a, void *const *) { cvn_np_lib_set_subslot_phy_port(W(a[0]), a[1]); }},
        {"cvn_np_lib_set_subslot_ifsubinst_ifsubinst_port",
         {kSubslot, kCage, kFront},
         {},
         [](const Args &a, void *const *) {
             cvn_np_lib_set_subslot_ifsubinst_ifsubinst_port(W(a[0]), a[1], a[2]);
         }},
        {"cvn_np_lib_get_subslot",
         {kFront},
         {},
         [](const Args &a, void *const *) { cvn_np_lib_get_subslot(a[0]); }},
        {"cvn_np_lib_get_subslot_port",
         {kFront},
         {},
         [](const Args &a, void *const *) { cvn_np_lib_get_subslot_port(a[0]); }},
        {"cvn_np_lib_get_port",
         {kFront},
         {},
         [](const Args &a, void *const *) { cvn_np_lib_get_port(a[0]); }},
        {"cvn_np_lib_get_ifsubinst",
         {kFront},
         {},
         [](const Args &a, void *const *) { cvn_np_lib_get_ifsubinst(a[0]); }},
        {"cvn_np_lib_get_ifsubinst_port",
         {kFront},
         {},
         [](const Args &a, void *const *) { cvn_np_lib_get_ifsubinst_port(a[0]); }},
        {"cvn_np_lib_get_phys_port_tuple45",
         {kPortType, kSubslot, kCage, kFront},
         {},
         [](const Args &a, void *const *) {
             cvn_np_lib_get_phys_port_tuple45(a[0], W(a[1]), W(a[2]), W(a[3]));
         }},
        {"aux_cvn_np_front_port_to_ifsubsys",
         {kFront},
         {k4, k4, k4},
         [](const Args &a, void *const *o) {
             aux_cvn_np_front_port_to_ifsubsys(a[0], U(o[0]), U(o[1]), U(o[2]));
         }},
        {"aux_cvn_np_port_info_get",
         {kSubslot, kCage, kIfsubType},
         {},
         [](const Args &a, void *const *) { aux_cvn_np_port_info_get(a[0], a[1], a[2]); }},
        {"aux_cvn_np_front_port_to_mapping_info",
         {kCage, kFront, kIfsubType},
         {k4, k4, k4, k4},
         [](const Args &a, void *const *o) {
             aux_cvn_np_front_port_to_mapping_info(a[0], a[1], a[2], U(o[0]), U(o[1]), U(o[2]),
                                                   U(o[3]));
         }},
        {"aux_cvn_np_info_num_local_ports",
         {kSubslot, kNp, kIfsubType},
         {},
         [](const Args &a, void *const *) { aux_cvn_np_info_num_local_ports(a[0], a[1], a[2]); }},
        {"aux_cvn_np_info_to_mapping_info",
         {kNp, kNpPort, kIfsubType},
         {k4, k4, k4},
         [](const Args &a, void *const *o) {
             aux_cvn_np_info_to_mapping_info(a[0], a[1], a[2], U(o[0]), U(o[1]), U(o[2]));
         }},
        {"aux_cvn_np_first_port_on_np",
         {kNp, kCage, kIfsubType},
         {k4, k4, k4},
         [](const Args &a, void *const *o) {
             aux_cvn_np_first_port_on_np(a[0], a[1], a[2], U(o[0]), U(o[1]), U(o[2]));
         }},
        {"aux_cvn_faceplate_to_mapping_info",
         {kCage, kFront, kPortType},
         {k4, k4, k4},
         [](const Args &a, void *const *o) {
             aux_cvn_faceplate_to_mapping_info(a[0], a[1], a[2], U(o[0]), U(o[1]), U(o[2]));
         }},
        {"aux_np_port_to_mapping_info",
         {kEntries, kNpPort, kCount},
         {k4, k4, k4},
         [](const Args &a, void *const *o) {
             aux_np_port_to_mapping_info(EntriesOf(a[0]), a[1], a[2], U(o[0]), U(o[1]), U(o[2]));
         }},
        {"aux_cvn_np_front_port_to_ifsubinst",
         {kFront},
         {k4},
         [](const Args &a, void *const *o) { aux_cvn_np_front_port_to_ifsubinst(a[0], U(o[0])); }},
    };
    return functions;
}

// ---- The cards ------------------------------------------------------------

constexpr uint32_t kAny = CVN_NP_SIM_ANY;

void PlugCages(uint32_t cages, std::vector<uint32_t> types)
{
    for (uint32_t c = 0; c < cages; ++c)
        cvn_np_sim_set_ifsubsys(0, c, types[c % types.size()]);
}
void PlugTolvar()
{ // bay 0 split (10GE and 40GE instances), bay 1 twenty 10GE ports
    cvn_np_sim_set_ifsubsys(0, kAny, CVN_NP_IFSUB_TYPE_TV_SPLIT);
    cvn_np_sim_set_ifsubsys(0, 0, CVN_NP_IFSUB_TYPE_10GE);
    cvn_np_sim_set_ifsubsys(0, 1, CVN_NP_IFSUB_TYPE_40GE);
    cvn_np_sim_set_ifsubsys(1, kAny, CVN_NP_IFSUB_TYPE_TV_20X10GE);
    cvn_np_sim_set_ifsubsys(1, 0, CVN_NP_IFSUB_TYPE_TV_20X10GE);
}

const std::vector<uint32_t> kThreeSpeeds = {CVN_NP_IFSUB_TYPE_100GE, CVN_NP_IFSUB_TYPE_40GE,
                                            CVN_NP_IFSUB_TYPE_10GE, CVN_NP_IFSUB_TYPE_40GE_ALT};

// The conditions a family's report may name, as the family states them.
std::vector<std::string> CageTexts(const std::string &f, const char *ifsubinst, const char *cage_id,
                                   std::vector<const char *> speeds)
{
    const std::string i = f + "_card_np_info->";
    std::vector<std::string> t = {"subslot < " + i + "num_subslot",
                                  std::string(ifsubinst) + " < " + i + "num_cage",
                                  std::string(cage_id) + " < " + i + "num_cage",
                                  "subslot_num < " + i + "num_subslot",
                                  "ifsubsys_num < " + i + "num_cage",
                                  "np_num < " + i + "num_complex",
                                  "np_id < cvn_np_how_many()",
                                  "np_complex < cvn_np_how_many()",
                                  "phys_front_port != NULL",
                                  "port_type != NULL",
                                  "fplate_port != NULL",
                                  "0"};
    for (const char *s : speeds)
        t.push_back("index < " + i + "port_subslot_" + s);
    return t;
}
std::vector<std::string> TolvarTexts(const std::string &f)
{
    const std::string i = f + "_card_np_info->";
    return {"subslot < " + i + "num_subslot",
            "subslot_num < " + i + "num_subslot",
            "np_num < " + i + "num_complex",
            "np_id < cvn_np_how_many()",
            "np_complex < cvn_np_how_many()",
            "phys_front_port != NULL",
            "port_type != NULL",
            "fplate_port != NULL",
            "subslot < CVN_NP_TOTAL_SUBSLOT_TOLVAR",
            "subslot < CVN_NP_TOTAL_SUBSLOTS",
            "port_type == ep_data->port_type",
            "0"};
}

std::vector<std::string> QuellonTexts()
{
    return {"phys_front_port < cvn_np_qln_max_ports",
            "fplate_port < cvn_np_qln_max_ports",
            "sub_phys_front_port < cvn_np_qln_max_ports",
            "np_id < cvn_np_how_many()",
            "np_complex < cvn_np_how_many()",
            "np_num < cvn_np_how_many()",
            "0"};
}

template <size_t n> std::pair<const port_mapping_entry *const *, uint32_t>
Array(const port_mapping_entry *const (&a)[n])
{
    return {a, static_cast<uint32_t>(n)};
}
// The tolvar rows' entry arrays, each once.
template <size_t n> std::vector<std::pair<const port_mapping_entry *const *, uint32_t>>
Rows(const cvn_np_ep_data (&rows)[n])
{
    std::vector<std::pair<const port_mapping_entry *const *, uint32_t>> out;
    for (const cvn_np_ep_data &r : rows) {
        bool seen = r.entries == nullptr;
        for (const auto &o : out)
            seen = seen || o.first == r.entries;
        if (!seen)
            out.emplace_back(r.entries, r.num_ports);
    }
    return out;
}
// For the families without pointer arrays of their own (maruta; quellon,
// whose slot 44 is empty): pointers into maruta's combo table.
const port_mapping_entry *const kComboEntries[] = {
    &cvn_np_port_mapping_maruta_combo0[0], &cvn_np_port_mapping_maruta_combo0[16],
    &cvn_np_port_mapping_maruta_combo0[32], &cvn_np_port_mapping_maruta_combo0[48],
    &cvn_np_port_mapping_maruta_combo0[58]};

struct Card {
    const char *name;
    uint32_t card_type;
    const char *source; // the family's file under src/
    std::vector<std::string> texts;
    std::array<std::vector<uint32_t>, kKinds> bounds; // per kind; valid values lie below
    uint32_t np_port;                                 // a valid NP-local port
    void (*populate)();
    std::vector<std::pair<const port_mapping_entry *const *, uint32_t>> arrays;
};

std::array<std::vector<uint32_t>, kKinds> Bounds(std::vector<uint32_t> front, uint32_t np,
                                                 uint32_t np_port, uint32_t cage, uint32_t subslot)
{
    std::array<std::vector<uint32_t>, kKinds> b{};
    b[kFront] = front;
    b[kNp] = {np};
    b[kNpPort] = {np_port, 96, 116, 192};
    b[kCage] = {cage};
    b[kSubslot] = {subslot};
    return b;
}

// How test names show a card.
void PrintTo(const Card &card, std::ostream *os) { *os << card.name; }

const std::vector<Card> &Cards()
{
    static const std::vector<Card> cards = {
        {"brisca",
         0x3D0274,
         "cvn_np_lib_brisca.cpp",
         CageTexts("brisca", "ifsubinst", "cage_id.ifsubsys", {"100g", "40g", "10g"}),
         Bounds({0x80, 0x7A}, 4, 214, 8, 1),
         204,
         [] { PlugCages(8, kThreeSpeeds); },
         {Array(np_local_port_map_brisca_10g), Array(np_local_port_map_brisca_40g),
          Array(np_local_port_map_brisca_100g)}},
        {"brisca_4p",
         0x3D0278,
         "cvn_np_lib_brisca_4p.cpp",
         CageTexts("brisca_4p", "ifsubinst", "cage_id.ifsubsys", {"100g", "40g", "10g"}),
         Bounds({0x40, 0x3A}, 4, 214, 4, 1),
         204,
         [] { PlugCages(4, kThreeSpeeds); },
         {Array(np_local_port_map_brisca_4p_10g), Array(np_local_port_map_brisca_4p_40g),
          Array(np_local_port_map_brisca_4p_100g)}},
        {"fenna",
         0x3D0267,
         "cvn_np_lib_fenna.cpp",
         CageTexts("fenna", "ifsubinst", "cage_id.ifsubsys", {"100g", "40g", "10g"}),
         Bounds({0x60, 0x5A}, 3, 255, 6, 1),
         204,
         [] { PlugCages(6, kThreeSpeeds); },
         {Array(np_local_port_map_fenna_10g), Array(np_local_port_map_fenna_40g),
          Array(np_local_port_map_fenna_100g)}},
        {"dornik",
         0x3D02C3,
         "cvn_np_lib_dornik.cpp",
         CageTexts("dornik", "ifsub", "ifsubsys_id.ifsubsys", {"100g"}),
         Bounds({0xC0, 0xB1}, 6, 118, 12, 1),
         116,
         [] { PlugCages(12, {CVN_NP_IFSUB_TYPE_DORNIK_100GE}); },
         {Array(np_local_port_map_dornik_100g)}},
        {"dornik_lite",
         0x3D02C2,
         "cvn_np_lib_dornik.cpp",
         CageTexts("dornik", "ifsub", "ifsubsys_id.ifsubsys", {"100g"}),
         Bounds({0x40, 0x31}, 2, 118, 4, 1),
         116,
         [] { PlugCages(12, {CVN_NP_IFSUB_TYPE_DORNIK_100GE}); },
         {Array(np_local_port_map_dornik_100g)}},
        {"maruta",
         0x3D02C1,
         "cvn_np_lib_maruta.cpp",
         {"subslot == 0", "subslot_num == 0", "np_id < cvn_np_how_many()",
          "np_complex < cvn_np_how_many()", "0"},
         Bounds({58, 59, 0x3A}, 2, 214, 4, 1),
         116,
         [] {
             PlugCages(4, {CVN_NP_IFSUB_TYPE_MARUTA_100GE, CVN_NP_IFSUB_TYPE_MARUTA_10GE});
         },
         {Array(kComboEntries)}},
        {"quellon",
         0x3D02C7,
         "cvn_np_lib_quellon.cpp",
         QuellonTexts(),
         Bounds({48, 24}, 2, 216, 12, 1),
         192,
         [] { PlugCages(12, {CVN_NP_IFSUB_TYPE_QUELLON_10GE}); },
         {Array(kComboEntries)}},
        {"quellon_1np",
         0x3D02CA,
         "cvn_np_lib_quellon.cpp",
         QuellonTexts(),
         Bounds({24, 48}, 1, 216, 6, 1),
         192,
         [] { PlugCages(6, {CVN_NP_IFSUB_TYPE_QUELLON_10GE}); },
         {Array(kComboEntries)}},
        {"tolvar_2slice", 0x3D0296, "cvn_np_lib_tolvar.cpp", TolvarTexts("tolvar"),
         Bounds({0x80, 0x40, 0x54, 0x20}, 2, 214, 2, 2), 192, PlugTolvar,
         Rows(cvn_np_lib_2slice_tv_info_types)},
        {"tolvar_1slice", 0x3D028C, "cvn_np_lib_1slice_tolvar.cpp", TolvarTexts("tv_1slice"),
         Bounds({0x80, 0x40, 0x54, 0x20}, 1, 214, 2, 2), 192, PlugTolvar,
         Rows(cvn_np_lib_tv_1slice_bay0_ep_info_types)},
    };
    return cards;
}

// ---- Values --------------------------------------------------------------

std::vector<uint32_t> Values(const Card &card, Kind kind)
{
    std::set<uint32_t> v(std::begin(kGeneric), std::end(kGeneric));
    for (uint32_t b : card.bounds[kind])
        v.insert({b - 1, b, b + 1});
    if (kind == kIfsubType) {
        for (uint32_t t = 0x10000; t <= 0x10003; ++t)
            v.insert(t);
        // The tolvar EP codes and their neighbours; one of them elsewhere.
        const bool tolvar = std::string(card.source).find("tolvar") != std::string::npos;
        for (uint32_t t = 564; t <= 579; ++t)
            if (tolvar || t == CVN_NP_IFSUB_TYPE_TV_SPLIT)
                v.insert(t);
        v.insert({CVN_NP_IFSUB_TYPE_QUELLON_10GE, CVN_NP_IFSUB_TYPE_DORNIK_100GE,
                  CVN_NP_IFSUB_TYPE_MARUTA_100GE, CVN_NP_IFSUB_TYPE_MARUTA_10GE});
    } else if (kind == kPortType) {
        for (uint32_t t = 0; t <= 9; ++t)
            v.insert(t);
    } else if (kind == kCardType) {
        // Both ends of every run of card types the library serves, and past them.
        for (uint32_t t : {0x3D0267u, 0x3D026Cu, 0x3D026Du, 0x3D0276u, 0x3D0278u, 0x3D0281u,
                           0x3D028Cu, 0x3D028Fu, 0x3D0291u, 0x3D0299u, 0x3D029Fu, 0x3D02AAu,
                           0x3D02C1u, 0x3D02C7u, 0x3D02D2u, 0x3D02DAu})
            v.insert({t - 1, t, t + 1});
    }
    return {v.begin(), v.end()};
}

uint32_t Baseline(const Card &card, Kind kind)
{
    switch (kind) {
    case kNpPort:
        return card.np_port;
    case kIfsubType:
        return card.card_type == 0x3D02C3 || card.card_type == 0x3D02C2
                   ? CVN_NP_IFSUB_TYPE_DORNIK_100GE
                   : CVN_NP_IFSUB_TYPE_10GE;
    case kPortType:
        return CVN_NP_PORT_TYPE_10GE;
    case kCardType:
        return card.card_type;
    default:
        return 0;
    }
}

struct Call {
    const Function *f;
    Args a;
    unsigned null_mask; // bit i: output i is NULL
    bool operator<(const Call &o) const
    {
        return std::tie(f, a, null_mask) < std::tie(o.f, o.a, o.null_mask);
    }
};

// Each argument over its values with the others at their baseline, with all
// outputs given (and, when `null_outputs`, with none); every NULL/non-NULL
// mix of the outputs at the baseline; and every generic value in all
// arguments at once.
std::vector<Call> CallsOf(const Card &card, const Function &f, bool null_outputs)
{
    std::set<Call> calls;
    const size_t n = f.args.size();
    const unsigned all_null = (1u << f.outs.size()) - 1;
    Args base{};
    for (size_t i = 0; i < n; ++i)
        base[i] = Baseline(card, f.args[i]);
    auto add = [&](const Args &a) {
        calls.insert({&f, a, 0});
        if (null_outputs)
            calls.insert({&f, a, all_null});
    };
    if (n > 0 && f.args[0] == kEntries) {
        // Slot 44: counts within each array, any count with a NULL array.
        for (uint32_t k = 0; k <= g_arrays.size(); ++k) {
            const uint32_t len = k < g_arrays.size() ? g_arrays[k].second : UINT32_MAX;
            std::set<uint32_t> counts = {0, 1, len - 1, len};
            for (uint32_t g : kGeneric)
                if (g <= len)
                    counts.insert(g);
            for (uint32_t count : counts)
                add({k, base[1], count, 0});
            for (uint32_t np_port : Values(card, kNpPort))
                add({k, np_port, std::min(len, 0xFFFFu), 0});
        }
    } else {
        for (size_t i = 0; i < n; ++i) {
            for (uint32_t v : Values(card, f.args[i])) {
                Args a = base;
                a[i] = v;
                add(a);
            }
        }
        if (n >= 2)
            for (uint32_t g : kGeneric)
                add({g, g, g, g});
    }
    for (unsigned mask = 0; mask <= all_null; ++mask)
        calls.insert({&f, base, mask});
    return {calls.begin(), calls.end()};
}

// ---- Running one call ----------------------------------------------------

enum Outcome : uint8_t { kReturned, kAsserted, kOther };

struct Ended {
    Outcome outcome;
    std::string detail;
};

bool AllDigits(const std::string &s)
{
    return !s.empty() && s.find_first_not_of("0123456789") == std::string::npos;
}

// Whether `err` is exactly one report line of the family or the core whose
// condition is one the family (or the core) states.
bool WellFormedReport(const Card &card, const std::string &err)
{
    const std::string dir = "platforms/corvan/lc/lc_tessel/lib/src/";
    const std::string tail = " -- assertion failed\n";
    if (err.size() < tail.size() || err.compare(err.size() - tail.size(), tail.size(), tail) != 0 ||
        err.find('\n') != err.size() - 1)
        return false;
    const size_t colon = err.find(": ");
    const size_t space = err.find(' ', colon + 2);
    if (colon == std::string::npos || space == std::string::npos ||
        !AllDigits(err.substr(colon + 2, space - colon - 2)))
        return false;
    const std::string path = err.substr(0, colon);
    const std::string text = err.substr(space + 1, err.size() - tail.size() - space - 1);
    if (path == dir + "cvn_np_lib.cpp")
        return text == "0";
    if (path != dir + card.source)
        return false;
    for (const std::string &t : card.texts)
        if (t == text)
            return true;
    return false;
}

Ended RunInChild(const Card &card, const Call &call)
{
    int fds[2];
    if (pipe(fds) != 0)
        return {kOther, "pipe failed"};
    std::fflush(nullptr);
    const pid_t pid = fork();
    if (pid < 0)
        return {kOther, "fork failed"};
    if (pid == 0) {
        dup2(fds[1], STDERR_FILENO);
        close(fds[0]);
        close(fds[1]);
        std::array<void *, 4> outs{};
        for (size_t i = 0; i < call.f->outs.size(); ++i)
            if ((call.null_mask & (1u << i)) == 0)
                outs[i] = std::malloc(call.f->outs[i]);
        call.f->invoke(call.a, outs.data());
        for (void *p : outs)
            std::free(p);
        _exit(0);
    }
    close(fds[1]);
    std::string err;
    char buf[4096];
    for (ssize_t got; (got = read(fds[0], buf, sizeof buf)) != 0;) {
        if (got > 0)
            err.append(buf, static_cast<size_t>(got));
        else if (errno != EINTR)
            break;
    }
    close(fds[0]);
    int status = 0;
    while (waitpid(pid, &status, 0) < 0 && errno == EINTR) {
    }
    if (WIFEXITED(status) && WEXITSTATUS(status) == 0 && err.empty())
        return {kReturned, ""};
    if (WIFSIGNALED(status) && WTERMSIG(status) == SIGABRT && WellFormedReport(card, err))
        return {kAsserted, ""};
    std::string how = WIFSIGNALED(status) ? "signal " + std::to_string(WTERMSIG(status))
                                          : "exit " + std::to_string(WEXITSTATUS(status));
    return {kOther, how + ", stderr: " + err.substr(0, 400)};
}

std::string Describe(const Call &call)
{
    std::string s = call.f->name;
    char buf[16];
    for (size_t i = 0; i < call.f->args.size(); ++i) {
        std::snprintf(buf, sizeof buf, "%s0x%X", i == 0 ? "(" : ", ", call.a[i]);
        s += buf;
    }
    s += call.f->args.empty() ? "(" : "";
    for (size_t i = 0; i < call.f->outs.size(); ++i)
        s += (call.null_mask & (1u << i)) != 0 ? ", NULL" : ", out";
    return s + ")";
}

// ---- The platform's states -------------------------------------------------

// NULL outputs with every argument value are swept once, with the
// populated platform; the other states take them at the baseline only.
struct State {
    const char *name;
    void (*set)(const Card &);
    bool null_outputs;
};
const State kStates[] = {
    {"populated", [](const Card &c) { c.populate(); }, true},
    {"empty", [](const Card &) {}, false},
    {"failing", [](const Card &) { cvn_np_sim_fail_all(0x5A17u); }, false},
};

class BadInputSweep : public ::testing::TestWithParam<Card> {};

TEST_P(BadInputSweep, EveryFunctionReturnsOrReportsItsFamilysAssertion)
{
    const Card &card = GetParam();
    g_arrays = card.arrays;
    size_t totals[3] = {0, 0, 0};
    std::vector<std::string> failures;
    for (const State &state : kStates) {
        cvn_np_sim_reset();
        cvn_np_sim_set_card_type(card.card_type);
        state.set(card);
        cardtype = card.card_type;
        ASSERT_EQ(cvn_np_lib_init(card.card_type), 0u);
        size_t counts[3] = {0, 0, 0};
        for (const Function &f : Functions()) {
            for (const Call &call : CallsOf(card, f, state.null_outputs)) {
                const Ended e = RunInChild(card, call);
                ++counts[e.outcome];
                if (e.outcome == kOther && failures.size() < 20)
                    failures.push_back(std::string(state.name) + ": " + Describe(call) + " -> " +
                                       e.detail);
            }
        }
        std::printf("%s, platform %s: %zu calls: %zu returned, %zu assertion reports, %zu other\n",
                    card.name, state.name, counts[0] + counts[1] + counts[2], counts[0], counts[1],
                    counts[2]);
        for (int i = 0; i < 3; ++i)
            totals[i] += counts[i];
    }
    std::printf("%s, all: %zu calls: %zu returned, %zu assertion reports, %zu other\n", card.name,
                totals[0] + totals[1] + totals[2], totals[0], totals[1], totals[2]);
    for (const std::string &f : failures)
        ADD_FAILURE() << f;
    EXPECT_EQ(totals[kOther], 0u);
    // Both ends are reached: the sweep is not all rejections or all answers.
    EXPECT_GT(totals[kReturned], 1000u);
    EXPECT_GT(totals[kAsserted], 100u);
}

INSTANTIATE_TEST_SUITE_P(Cards, BadInputSweep, ::testing::ValuesIn(Cards()),
                         [](const ::testing::TestParamInfo<Card> &i) {
                             return std::string(i.param.name);
                         });

// The report check itself: what it takes and what it refuses.
TEST(BadInputSweepReport, AcceptsOnlyOneLineOfTheFamilyOrTheCore)
{
    const Card &brisca = Cards()[0];
    const std::string dir = "platforms/corvan/lc/lc_tessel/lib/src/";
    EXPECT_TRUE(WellFormedReport(
        brisca, dir + "cvn_np_lib_brisca.cpp: 12 np_id < cvn_np_how_many() -- assertion failed\n"));
    EXPECT_TRUE(WellFormedReport(brisca, dir + "cvn_np_lib.cpp: 130 0 -- assertion failed\n"));
    EXPECT_FALSE(WellFormedReport(brisca, dir + "cvn_np_lib.cpp: 130 1 -- assertion failed\n"));
    EXPECT_FALSE(
        WellFormedReport(brisca, dir + "cvn_np_lib_fenna.cpp: 12 0 -- assertion failed\n"));
    EXPECT_FALSE(WellFormedReport(
        brisca, dir + "cvn_np_lib_brisca.cpp: 12 subslot == 0 -- assertion failed\n"));
    EXPECT_FALSE(
        WellFormedReport(brisca, dir + "cvn_np_lib_brisca.cpp: x2 0 -- assertion failed\n"));
    EXPECT_FALSE(WellFormedReport(brisca, dir + "cvn_np_lib_brisca.cpp: 12 0 -- assertion failed"));
    EXPECT_FALSE(WellFormedReport(brisca, "==1==ERROR\n" + dir +
                                              "cvn_np_lib_brisca.cpp: 12 0 -- assertion failed\n"));
}

} // namespace
