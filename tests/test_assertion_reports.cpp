// Every precondition of the core and of each family, as one table of rows:
// which families a row applies to, what is plugged into subslot 0 / cage 0,
// the call that breaks the precondition at its first failing value, the call
// with the last valid value (it must return normally), and the condition
// text of the report.  "$" in a text stands for the family's np_info pointer.
// Rows that break two preconditions at once show which one is reported first.
#include <string>
#include <vector>

#include "test_support.h"

namespace {

using cvn_test::LibTest;

struct Fam {
    char key;
    uint32_t card;
    const char *file; // source of the family's checks, beside the core's
    const char *info; // the family's np_info pointer as the texts name it
    uint32_t subslots, cages, nps;
    uint32_t t100, tbad; // the family's 100GE ifsub type, a type it does not know
};

// brisca: 8 cages, 4 NPs; brisca_4p: 4 cages, 4 NPs; fenna: 6 cages, 3 NPs;
// dornik: lite 4 cages, 2 NPs, full 12 cages, 6 NPs, 100GE only (0x10030); maruta: 2 NPs; quellon:
// 2 NPs (48 ports) or 1 NP (24 ports); tolvar: 2 subslots, 2 NPs (1-slice: 1).
const Fam kFams[] = {
    {'C', 0, "cvn_np_lib.cpp", "", 0, 0, 0, 0, 0},
    {'B', 0x3D0274, "cvn_np_lib_brisca.cpp", "brisca_card_np_info", 1, 8, 4, 0x10000, 0x10004},
    {'P', 0x3D0278, "cvn_np_lib_brisca_4p.cpp", "brisca_4p_card_np_info", 1, 4, 4, 0x10000,
     0x10004},
    {'F', 0x3D0267, "cvn_np_lib_fenna.cpp", "fenna_card_np_info", 1, 6, 3, 0x10000, 0x10003},
    {'d', 0x3D02C6, "cvn_np_lib_dornik.cpp", "dornik_card_np_info", 1, 12, 6, 0x10030, 0x10000},
    {'D', 0x3D02C2, "cvn_np_lib_dornik.cpp", "dornik_card_np_info", 1, 4, 2, 0x10030, 0x10000},
    {'M', 0x3D02C1, "cvn_np_lib_maruta.cpp", "", 1, 0, 2, 0x10040, 0},
    {'Q', 0x3D02C7, "cvn_np_lib_quellon.cpp", "", 1, 0, 2, 0, 0},
    {'q', 0x3D02CA, "cvn_np_lib_quellon.cpp", "", 1, 0, 1, 0, 0},
    {'T', 0x3D0296, "cvn_np_lib_tolvar.cpp", "tolvar_card_np_info", 2, 0, 2, 0x10000, 0x10004},
    {'S', 0x3D028C, "cvn_np_lib_1slice_tolvar.cpp", "tv_1slice_card_np_info", 2, 0, 1, 0x10000,
     0x10004},
};

using Call = void (*)(const Fam &);
struct Row {
    const char *fams;
    uint32_t plug; // type reported for subslot 0, cage / instance 0 (0: nothing)
    Call bad, good;
    const char *text;
};

uint32_t o, two[2]; // outputs the calls may write (1-slice slot 24 writes a list of two)
constexpr uint32_t kNone = 0xFFFFFFFFu;
#define L(...) +[](const Fam &f) { (void)f, (void)(__VA_ARGS__); }

// A cage's front port: cage in bits 7..4, port in bits 3..0.
uint32_t Fp(uint32_t cage, uint32_t port) { return cage << 4 | port; }

// clang-format off
const Row kRows[] = {
    // Core: every card type just outside a run of known types is rejected.
    {"C", 0, L(cvn_np_lib_init(0x3D0266)), L(cvn_np_lib_init(0x3D0267)), "0"},
    {"C", 0, L(cvn_np_lib_init(0x3D0277)), L(cvn_np_lib_init(0x3D0276)), "0"},
    {"C", 0, L(cvn_np_lib_init(0x3D0282)), L(cvn_np_lib_init(0x3D0281)), "0"},
    {"C", 0, L(cvn_np_lib_init(0x3D028B)), L(cvn_np_lib_init(0x3D028C)), "0"},
    {"C", 0, L(cvn_np_lib_init(0x3D0290)), L(cvn_np_lib_init(0x3D028F)), "0"},
    {"C", 0, L(cvn_np_lib_init(0x3D0290)), L(cvn_np_lib_init(0x3D0291)), "0"},
    {"C", 0, L(cvn_np_lib_init(0x3D029A)), L(cvn_np_lib_init(0x3D0299)), "0"},
    {"C", 0, L(cvn_np_lib_init(0x3D029A)), L(cvn_np_lib_init(0x3D029B)), "0"},
    {"C", 0, L(cvn_np_lib_init(0x3D02A0)), L(cvn_np_lib_init(0x3D029F)), "0"},
    {"C", 0, L(cvn_np_lib_init(0x3D02A9)), L(cvn_np_lib_init(0x3D02AA)), "0"},
    {"C", 0, L(cvn_np_lib_init(0x3D02BE)), L(cvn_np_lib_init(0x3D02BD)), "0"},
    {"C", 0, L(cvn_np_lib_init(0x3D02C0)), L(cvn_np_lib_init(0x3D02C1)), "0"},
    {"C", 0, L(cvn_np_lib_init(0x3D02D3)), L(cvn_np_lib_init(0x3D02D2)), "0"},
    {"C", 0, L(cvn_np_lib_init(0x3D02D7)), L(cvn_np_lib_init(0x3D02D8)), "0"},
    {"C", 0, L(cvn_np_lib_init(0x3D02DB)), L(cvn_np_lib_init(0x3D02DA)), "0"},
    // The lazy road: an unknown type from the platform on the first call.
    {"C", 0, L(initialized = 0, cvn_np_sim_set_card_type(0x3D0277), cvn_np_how_many()), nullptr, "0"},

    // Slots every family with that precondition shares.
    {"BPFDdTS", 0, L(cvn_np_port_info_subslot(f.subslots)), L(cvn_np_port_info_subslot(f.subslots - 1)), "subslot < $->num_subslot"},
    {"BPFDdTS", 0, L(cvn_np_port_info_from_subslot_ifsubinst(f.subslots, 99)), L(cvn_np_port_info_from_subslot_ifsubinst(f.subslots - 1, 0)), "subslot < $->num_subslot"},
    {"BPFDdMQqTS", 0, L(cvn_np_info_num_local_ports(f.nps)), L(cvn_np_info_num_local_ports(f.nps - 1)), "np_id < cvn_np_how_many()"},
    {"BPFDdTS", 0, L(cvn_np_first_front_port_on_np(f.nps, nullptr)), L(cvn_np_first_front_port_on_np(f.nps - 1, &o)), "phys_front_port != NULL"},
    {"BPFDdTS", 0, L(cvn_np_first_front_port_on_np(f.nps, &o)), nullptr, "np_id < cvn_np_how_many()"},
    {"BPFDdTS", 0, L(cvn_np_first_fplate_porttype_on_np(f.nps, nullptr, nullptr)), nullptr, "port_type != NULL"},
    {"BPFDdTS", 0, L(cvn_np_first_fplate_porttype_on_np(f.nps, &o, nullptr)), nullptr, "fplate_port != NULL"},
    {"BPFDdTS", 0, L(cvn_np_first_fplate_porttype_on_np(f.nps, &o, &o)), L(cvn_np_first_fplate_porttype_on_np(f.nps - 1, &o, &o)), "np_id < cvn_np_how_many()"},
    {"BPFDdMTS", 0, L(cvn_np_complex_to_subslot(uint8_t(f.nps))), L(cvn_np_complex_to_subslot(uint8_t(f.nps - 1))), "np_complex < cvn_np_how_many()"},
    {"BPFDdMQqTS", 0, L(cvn_np_complex_to_subslot_list(uint8_t(f.nps), nullptr, nullptr)), L(cvn_np_complex_to_subslot_list(uint8_t(f.nps - 1), &o, two)), "np_complex < cvn_np_how_many()"},
    {"BPFDdMQqTS", 0, L(cvn_np_complex_to_np(uint8_t(f.nps), 0)), L(cvn_np_complex_to_np(uint8_t(f.nps - 1), 1)), "np_complex < cvn_np_how_many()"},
    {"BPFDdTS", 0, L(aux_cvn_np_port_info_get(f.subslots, 99, f.t100)), L(aux_cvn_np_port_info_get(f.subslots - 1, 0, f.t100)), "subslot_num < $->num_subslot"},
    {"BPFDdTS", 0, L(aux_cvn_np_info_num_local_ports(f.subslots, f.nps, f.t100)), L(aux_cvn_np_info_num_local_ports(f.subslots - 1, f.nps - 1, f.t100)), "subslot_num < $->num_subslot"},
    {"BPFDdTS", 0, L(aux_cvn_np_info_num_local_ports(0, f.nps, f.tbad)), nullptr, "np_num < $->num_complex"},
    {"BPFDdTS", 0, L(aux_cvn_np_info_num_local_ports(0, f.nps - 1, f.tbad)), nullptr, "0"},
    {"BPFDdTS", 0, L(aux_cvn_np_info_to_mapping_info(f.nps, 0, f.tbad, &o, &o, &o)), L(aux_cvn_np_info_to_mapping_info(f.nps - 1, 0, f.t100, &o, &o, &o)), "np_num < $->num_complex"},
    {"BPFDdT", 0, L(aux_cvn_np_info_to_mapping_info(f.nps - 1, 0, f.tbad, &o, &o, &o)), nullptr, "0"},

    // Cage families: cage bounds, module types and faceplate indexes.
    {"BPF", 0, L(cvn_np_port_info_from_subslot_ifsubinst(0, uint16_t(f.cages))), L(cvn_np_port_info_from_subslot_ifsubinst(0, uint16_t(f.cages - 1))), "ifsubinst < $->num_cage"},
    {"Dd", 0, L(cvn_np_port_info_from_subslot_ifsubinst(0, uint16_t(f.cages))), L(cvn_np_port_info_from_subslot_ifsubinst(0, uint16_t(f.cages - 1))), "ifsub < $->num_cage"},
    {"BPF", 0, L(aux_cvn_np_front_port_to_ifsubsys(Fp(f.cages, 0), &o, &o, &o)), L(aux_cvn_np_front_port_to_ifsubsys(Fp(f.cages - 1, 0), &o, &o, &o)), "cage_id.ifsubsys < $->num_cage"},
    {"Dd", 0, L(aux_cvn_np_front_port_to_ifsubsys(Fp(f.cages, 0), &o, &o, &o)), L(aux_cvn_np_front_port_to_ifsubsys(Fp(f.cages - 1, 0), &o, &o, &o)), "ifsubsys_id.ifsubsys < $->num_cage"},
    {"BPFDd", 0, L(aux_cvn_np_port_info_get(0, f.cages, f.t100)), L(aux_cvn_np_port_info_get(0, f.cages - 1, f.t100)), "ifsubsys_num < $->num_cage"},
    {"BPFDd", 0, L(aux_cvn_np_front_port_to_mapping_info(f.cages, 0x01, f.tbad, &o, &o, &o, &o)), L(aux_cvn_np_front_port_to_mapping_info(f.cages - 1, Fp(f.cages - 1, 0), f.t100, &o, &o, &o, &o)), "ifsubsys_num < $->num_cage"},
    {"BPFDd", 0, L(aux_cvn_np_front_port_to_mapping_info(0, 0x01, f.tbad, &o, &o, &o, &o)), nullptr, "0"},
    {"BPFDd", 0, L(aux_cvn_np_front_port_to_mapping_info(0, 0x01, f.t100, &o, &o, &o, &o)), nullptr, "index < $->port_subslot_100g"},
    // brisca 100GE: the port value itself is the index, 128 and up count as no port.
    {"B", 0, L(aux_cvn_np_front_port_to_mapping_info(7, 0x80, 0x10000, &o, &o, &o, &o)), nullptr, "index < $->port_subslot_100g"},
    {"B", 0, L(aux_cvn_np_front_port_to_mapping_info(7, 0x170, 0x10000, &o, &o, &o, &o)), nullptr, "index < $->port_subslot_100g"},
    {"BPF", 0, L(aux_cvn_np_front_port_to_mapping_info(0, 0x02, 0x10001, &o, &o, &o, &o)), L(aux_cvn_np_front_port_to_mapping_info(f.cages - 1, 0x100 | Fp(f.cages - 1, 1), 0x10001, &o, &o, &o, &o)), "index < $->port_subslot_40g"},
    {"BPF", 0, L(aux_cvn_np_front_port_to_mapping_info(0, 0x0A, 0x10002, &o, &o, &o, &o)), L(aux_cvn_np_front_port_to_mapping_info(f.cages - 1, Fp(f.cages - 1, 9), 0x10002, &o, &o, &o, &o)), "index < $->port_subslot_10g"},
    {"BP", 0, L(aux_cvn_np_info_num_local_ports(0, 0, 0x10004)), L(aux_cvn_np_info_num_local_ports(0, 0, 0x10003)), "0"},
    {"F", 0, L(aux_cvn_np_info_to_mapping_info(0, 0, 0x10003, &o, &o, &o)), nullptr, "0"},
    {"BPFDd", 0, L(aux_cvn_faceplate_to_mapping_info(f.cages, 0x01, 2, &o, &o, &o)), L(aux_cvn_faceplate_to_mapping_info(f.cages - 1, Fp(f.cages - 1, 0), 4, &o, &o, &o)), "ifsubsys_num < $->num_cage"},
    {"BPFDd", 0, L(aux_cvn_faceplate_to_mapping_info(0, 0x01, 2, &o, &o, &o)), nullptr, "0"},
    {"Dd", 0, L(aux_cvn_faceplate_to_mapping_info(0, 0x00, 3, &o, &o, &o)), nullptr, "0"},
    {"BPFDd", 0, L(aux_cvn_faceplate_to_mapping_info(0, 0x01, 4, &o, &o, &o)), nullptr, "index < $->port_subslot_100g"},
    {"BPF", 0, L(aux_cvn_faceplate_to_mapping_info(0, 0x02, 3, &o, &o, &o)), L(aux_cvn_faceplate_to_mapping_info(f.cages - 1, Fp(f.cages - 1, 1), 3, &o, &o, &o)), "index < $->port_subslot_40g"},
    {"BPF", 0, L(aux_cvn_faceplate_to_mapping_info(0, 0x0A, 1, &o, &o, &o)), L(aux_cvn_faceplate_to_mapping_info(f.cages - 1, Fp(f.cages - 1, 9), 1, &o, &o, &o)), "index < $->port_subslot_10g"},
    {"F", 0x10003, L(cvn_np_info_num_local_ports(0)), nullptr, "0"},
    // A front port of a cage that reports no module reaches slot 39's "0".
    {"BPFDd", kNone, L(cvn_np_front_port_to_np(0x00)), nullptr, "0"},
    {"BPF", 0x10001, L(cvn_np_front_port_to_np_port(0x02)), L(cvn_np_front_port_to_np_port(0x01)), "index < $->port_subslot_40g"},

    // maruta: one subslot, four instances.
    {"M", 0, L(cvn_np_port_info_subslot(1)), L(cvn_np_port_info_subslot(0)), "subslot == 0"},
    {"M", 0, L(cvn_np_port_info_from_subslot_ifsubinst(1, 0)), L(cvn_np_port_info_from_subslot_ifsubinst(0, 0)), "subslot == 0"},
    {"M", 0, L(aux_cvn_np_port_info_get(1, 0, 0x10041)), L(aux_cvn_np_port_info_get(0, 0, 0x10041)), "subslot_num == 0"},
    {"M", 0, L(aux_cvn_np_front_port_to_mapping_info(4, 0, 0x10040, &o, &o, &o, &o)), L(aux_cvn_np_front_port_to_mapping_info(3, 9, 0x10041, &o, &o, &o, &o)), "0"},

    // quellon: 24 ports per NP, the port being the argument's low 8 bits.
    {"Qq", 0, L(cvn_np_front_port_to_np(0x100 | f.nps * 24)), L(cvn_np_front_port_to_np(0x100 | (f.nps * 24 - 1))), "phys_front_port < cvn_np_qln_max_ports"},
    {"Q", 0, L(cvn_np_front_port_to_np_port(48)), L(cvn_np_front_port_to_np_port(47)), "phys_front_port < cvn_np_qln_max_ports"},
    {"Q", 0, L(cvn_np_front_port_to_port_type(48)), L(cvn_np_front_port_to_port_type(47)), "phys_front_port < cvn_np_qln_max_ports"},
    {"Qq", 0, L(cvn_faceplate_porttype_to_np(2, f.nps * 24)), L(cvn_faceplate_porttype_to_np(2, f.nps * 24 - 1)), "fplate_port < cvn_np_qln_max_ports"},
    {"Q", 0, L(cvn_faceplate_porttype_to_np_port(2, 48)), L(cvn_faceplate_porttype_to_np_port(2, 47)), "fplate_port < cvn_np_qln_max_ports"},
    {"Q", 0, L(cvn_faceplate_porttype_to_phys_port(2, 48)), L(cvn_faceplate_porttype_to_phys_port(2, 47)), "fplate_port < cvn_np_qln_max_ports"},
    {"Q", 0, L(cvn_faceplate_porttype_mapping_info(2, 48, &o, &o, &o)), L(cvn_faceplate_porttype_mapping_info(2, 47, &o, &o, &o)), "fplate_port < cvn_np_qln_max_ports"},
    {"Qq", 0, L(cvn_np_to_cpu_port_map(uint16_t(f.nps))), L(cvn_np_to_cpu_port_map(uint16_t(f.nps - 1))), "np_num < cvn_np_how_many()"},
    {"Qq", 0, L(cvn_np_lib_set_subslot_phy_port(0, f.nps * 24)), L(cvn_np_lib_set_subslot_phy_port(0, f.nps * 24 - 1)), "phys_front_port < cvn_np_qln_max_ports"},
    {"Qq", 0, L(cvn_np_lib_set_subslot_ifsubinst_ifsubinst_port(0, f.nps * 6, 0)), L(cvn_np_lib_set_subslot_ifsubinst_ifsubinst_port(0, f.nps * 6 - 1, 7)), "0"},
    {"Qq", 0, L(cvn_np_lib_get_subslot(f.nps * 24)), L(cvn_np_lib_get_subslot(f.nps * 24 - 1)), "sub_phys_front_port < cvn_np_qln_max_ports"},
    {"Q", 0, L(cvn_np_lib_get_port(0x130)), L(cvn_np_lib_get_port(0x12F)), "sub_phys_front_port < cvn_np_qln_max_ports"},
    {"Q", 0, L(cvn_np_lib_get_ifsubinst(48)), L(cvn_np_lib_get_ifsubinst(47)), "sub_phys_front_port < cvn_np_qln_max_ports"},
    {"Q", 0, L(cvn_np_lib_get_ifsubinst_port(48)), L(cvn_np_lib_get_ifsubinst_port(47)), "sub_phys_front_port < cvn_np_qln_max_ports"},
    {"Qq", 0, L(cvn_np_lib_get_phys_port_tuple45(2, 0, uint16_t(f.nps * 24), 0)), L(cvn_np_lib_get_phys_port_tuple45(2, 0, uint16_t(f.nps * 24 - 1), 0)), "sub_phys_front_port < cvn_np_qln_max_ports"},

    // tolvar: subslot in bits 7..6 of a front port; 568 is a plain 10GE EP.
    {"TS", 0, L(aux_cvn_np_front_port_to_mapping_info(0, 0x80, 568, &o, &o, &o, &o)), L(aux_cvn_np_front_port_to_mapping_info(0, 0x40, 568, &o, &o, &o, &o)), "subslot < CVN_NP_TOTAL_SUBSLOT_TOLVAR"},
    {"TS", 0, L(aux_cvn_np_front_port_to_mapping_info(0, 0x80, 0x10000, &o, &o, &o, &o)), L(aux_cvn_np_front_port_to_mapping_info(0, 0x40, 0x10000, &o, &o, &o, &o)), "subslot < CVN_NP_TOTAL_SUBSLOT_TOLVAR"},
    {"TS", 0, L(aux_cvn_np_front_port_to_mapping_info(0, 0x80, 0x10002, &o, &o, &o, &o)), L(aux_cvn_np_front_port_to_mapping_info(0, 0x40, 0x10002, &o, &o, &o, &o)), "subslot < CVN_NP_TOTAL_SUBSLOT_TOLVAR"},
    {"TS", 0, L(aux_cvn_np_front_port_to_mapping_info(0, 0x80, f.tbad, &o, &o, &o, &o)), nullptr, "0"},
    {"S", 0, L(aux_cvn_np_front_port_to_mapping_info(0, 0x00, 0x10003, &o, &o, &o, &o)), nullptr, "0"},
    {"TS", 0, L(aux_cvn_np_first_port_on_np(2, 0, 568, &o, &o, &o)), L(aux_cvn_np_first_port_on_np(1, 0, 568, &o, &o, &o)), "subslot < CVN_NP_TOTAL_SUBSLOT_TOLVAR"},
    {"TS", 0, L(aux_cvn_np_first_port_on_np(2, 0, 0x10001, &o, &o, &o)), L(aux_cvn_np_first_port_on_np(2, 0, 0x10004, &o, &o, &o)), "subslot < CVN_NP_TOTAL_SUBSLOT_TOLVAR"},
    {"TS", 568, L(aux_cvn_faceplate_to_mapping_info(0, 0x00, 3, &o, &o, &o)), L(aux_cvn_faceplate_to_mapping_info(0, 0x07, 1, &o, &o, &o)), "port_type == ep_data->port_type"},
    {"TS", 0x10000, L(aux_cvn_faceplate_to_mapping_info(0, 0x00, 1, &o, &o, &o)), L(aux_cvn_faceplate_to_mapping_info(0, 0x00, 4, &o, &o, &o)), "port_type == ep_data->port_type"},
    {"TS", 0x10004, L(aux_cvn_faceplate_to_mapping_info(0, 0x00, 1, &o, &o, &o)), nullptr, "0"},
    {"TS", 0, L(cvn_np_sim_set_ifsubsys(2, CVN_NP_SIM_ANY, 568), cvn_np_sim_set_ifsubsys(2, 0, 568), aux_cvn_faceplate_to_mapping_info(0, 0x80, 1, &o, &o, &o)), nullptr, "subslot < CVN_NP_TOTAL_SUBSLOT_TOLVAR"},
    {"S", 568, L(cvn_np_sim_set_ifsubsys(1, CVN_NP_SIM_ANY, 568), aux_cvn_np_info_to_mapping_info(0, 192, 0x10004, &o, &o, &o)), L(cvn_np_sim_set_ifsubsys(1, CVN_NP_SIM_ANY, 568), aux_cvn_np_info_to_mapping_info(0, 192, 568, &o, &o, &o)), "0"},
    {"S", 0, L(cvn_np_first_phys_port_on_np(2, nullptr)), L(cvn_np_first_phys_port_on_np(1, &o)), "phys_front_port != NULL"},
    {"S", 0, L(cvn_np_first_phys_port_on_np(2, &o)), nullptr, "subslot < CVN_NP_TOTAL_SUBSLOTS"},
};
// clang-format on

struct Case {
    const Fam *fam;
    const Row *row;
};

std::vector<Case> Cases()
{
    std::vector<Case> cases;
    for (const Row &row : kRows)
        for (const Fam &fam : kFams)
            if (std::string(row.fams).find(fam.key) != std::string::npos)
                cases.push_back({&fam, &row});
    return cases;
}

class AssertionReport : public LibTest, public ::testing::WithParamInterface<Case> {
  protected:
    AssertionReport() : LibTest(0) {}
};

TEST_P(AssertionReport, FirstFailingPreconditionIsReportedAndLastValidValuePasses)
{
    const Fam &f = *GetParam().fam;
    const Row &r = *GetParam().row;
    std::string text = r.text;
    if (auto at = text.find('$'); at != std::string::npos)
        text.replace(at, 1, f.info);
    SCOPED_TRACE(f.file + std::string(": ") + text);
    if (f.card != 0) {
        cardtype = f.card;
        ASSERT_EQ(cvn_np_lib_init(f.card), 0u);
    }
    if (r.plug != 0) { // the cage, or the EP's subslot level and instance 0
        Plug(0, 0, r.plug);
        Plug(0, CVN_NP_SIM_ANY, r.plug);
    }
    if (r.good != nullptr)
        r.good(f); // the last valid value returns normally
    EXPECT_DEATH(r.bad(f), cvn_test::ReportLine(f.file, text));
}

INSTANTIATE_TEST_SUITE_P(AllFamilies, AssertionReport, ::testing::ValuesIn(Cases()),
                         [](const ::testing::TestParamInfo<Case> &info) {
                             return std::string(1, info.param.fam->key) + "_" +
                                    std::to_string(info.index);
                         });

} // namespace
