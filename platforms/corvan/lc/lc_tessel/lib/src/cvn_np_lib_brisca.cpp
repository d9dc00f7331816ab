// cvn_np_lib_brisca.cpp - the brisca cards: eight cages on four NPs, one NP
// per complex, one subslot.  Cages 2n and 2n+1 belong to NP n; each cage
// takes a 100GE module (one port), a 40GE module (two ports) or a 10GE
// module (ten ports), as the platform reports.

#include "cvn_np_cage_engine.h"
#include "cvn_np_lib_tables.h"

namespace cage = cvn_np::cage;
using cage::map_row;

namespace {

// The wiring of each speed, from which its tables are generated.
constexpr cage::wiring k_10g = {np_info_brisca, cage::k_10ge, cvn_np_port_mapping_brisca_10g};
constexpr cage::wiring k_40g = {np_info_brisca, cage::k_40ge, cvn_np_port_mapping_brisca_40g};
constexpr cage::wiring k_100g = {np_info_brisca, cage::k_100ge, cvn_np_port_mapping_brisca_100g};

} // namespace

extern "C" {

constexpr np_info np_info_brisca = cage::info_of({4, 8, 8, 8, 1, 2, 1, 10});

constexpr port_info port_info_brisca_10g[2] = {{10, CVN_NP_PORT_TYPE_10GE}, cage::k_list_end};
constexpr port_info port_info_brisca_40g[2] = {{2, CVN_NP_PORT_TYPE_40GE}, cage::k_list_end};
constexpr port_info port_info_brisca_100g[2] = {{1, CVN_NP_PORT_TYPE_100GE}, cage::k_list_end};
constexpr port_info brisca_dummy_port_info[1] = {cage::k_list_end};
constexpr const port_info *port_info_brisca[6] = {
    cage::k_no_ports,     port_info_brisca_10g,  cage::k_combo_list<8>,
    port_info_brisca_40g, port_info_brisca_100g, nullptr,
};

constexpr port_mapping_entry cvn_np_port_mapping_brisca_10g[81] = {CVN_NP_ROWS(k_10g.entry, 8, 1)};
constexpr port_mapping_entry cvn_np_port_mapping_brisca_40g[17] = {CVN_NP_ROWS(k_40g.entry, 1, 7)};
constexpr port_mapping_entry cvn_np_port_mapping_brisca_100g[9] = {CVN_NP_ROWS(k_100g.entry, 0, 9)};

// The entries already run NP by NP, so all three maps of a speed are the
// table in order.
constexpr map_row np_local_port_map_brisca_10g[80] = {CVN_NP_ROWS(k_10g.in_order, 8, 0)};
constexpr map_row np_local_port_map_brisca_40g[16] = {CVN_NP_ROWS(k_40g.in_order, 1, 6)};
constexpr map_row np_local_port_map_brisca_100g[8] = {CVN_NP_ROWS(k_100g.in_order, 0, 8)};
constexpr map_row fplate_port_map_brisca_10g[80] = {CVN_NP_ROWS(k_10g.in_order, 8, 0)};
constexpr map_row fplate_port_map_brisca_40g[16] = {CVN_NP_ROWS(k_40g.in_order, 1, 6)};
constexpr map_row fplate_port_map_brisca_100g[8] = {CVN_NP_ROWS(k_100g.in_order, 0, 8)};
constexpr map_row phys_front_port_map_brisca_10g[80] = {CVN_NP_ROWS(k_10g.in_order, 8, 0)};
constexpr map_row phys_front_port_map_brisca_40g[16] = {CVN_NP_ROWS(k_40g.in_order, 1, 6)};
constexpr map_row phys_front_port_map_brisca_100g[8] = {CVN_NP_ROWS(k_100g.in_order, 0, 8)};

constexpr int32_t brisca_phys_2_fplate_cage_10GE[128] = {CVN_NP_ROWS(k_10g.fplate_index, 12, 8)};
constexpr int32_t brisca_phys_2_fplate_cage_40GE[128] = {CVN_NP_ROWS(k_40g.fplate_index, 12, 8)};
constexpr int32_t brisca_phys_2_fplate_cage_100GE[128] = {CVN_NP_ROWS(k_100g.fplate_index, 12, 8)};

cage::current_map brisca_card_phys_map_100ge, brisca_card_fplate_map_100ge,
    brisca_card_np_port_map_100ge;
cage::current_map brisca_card_phys_map_40ge, brisca_card_fplate_map_40ge,
    brisca_card_np_port_map_40ge;
cage::current_map brisca_card_phys_map_10ge, brisca_card_fplate_map_10ge,
    brisca_card_np_port_map_10ge;
const np_info *brisca_card_np_info;
const port_info *const *brisca_card_port_info;
card_version brisca_card_version;
subslot_info brisca_card_subslot_info;
cvn_np_api cvn_np_api_brisca;

} // extern "C"

namespace {

// Each speed checks its tables against its wiring, row for row.
constexpr cage::family k_brisca = {
    .path = "platforms/corvan/lc/lc_tessel/lib/src/cvn_np_lib_brisca.cpp",
    .text =
        {
            .subslot = CVN_NP_CHECK("subslot < brisca_card_np_info->num_subslot"),
            .ifsubinst = CVN_NP_CHECK("ifsubinst < brisca_card_np_info->num_cage"),
            .cage_id = CVN_NP_CHECK("cage_id.ifsubsys < brisca_card_np_info->num_cage"),
            .subslot_num = CVN_NP_CHECK("subslot_num < brisca_card_np_info->num_subslot"),
            .ifsubsys_num = CVN_NP_CHECK("ifsubsys_num < brisca_card_np_info->num_cage"),
            .np_num = CVN_NP_CHECK("np_num < brisca_card_np_info->num_complex"),
            .np_id = CVN_NP_CHECK("np_id < cvn_np_how_many()"),
            .np_complex = CVN_NP_CHECK("np_complex < cvn_np_how_many()"),
            .front_needed = CVN_NP_CHECK("phys_front_port != NULL"),
            .port_type_needed = CVN_NP_CHECK("port_type != NULL"),
            .fplate_needed = CVN_NP_CHECK("fplate_port != NULL"),
            .unknown = CVN_NP_CHECK("0"),
        },
    .tables = {&np_info_brisca, port_info_brisca},
    .card_np_info = &brisca_card_np_info,
    .card_port_info = &brisca_card_port_info,
    .card_version_record = &brisca_card_version,
    .card_subslot_info = &brisca_card_subslot_info,
    .dummy_port_info = brisca_dummy_port_info,
    .speeds =
        {
            {k_100g, phys_front_port_map_brisca_100g, fplate_port_map_brisca_100g,
             np_local_port_map_brisca_100g, &brisca_card_phys_map_100ge,
             &brisca_card_fplate_map_100ge, &brisca_card_np_port_map_100ge,
             brisca_phys_2_fplate_cage_100GE,
             CVN_NP_CHECK("index < brisca_card_np_info->port_subslot_100g")},
            {k_40g, phys_front_port_map_brisca_40g, fplate_port_map_brisca_40g,
             np_local_port_map_brisca_40g, &brisca_card_phys_map_40ge, &brisca_card_fplate_map_40ge,
             &brisca_card_np_port_map_40ge, brisca_phys_2_fplate_cage_40GE,
             CVN_NP_CHECK("index < brisca_card_np_info->port_subslot_40g")},
            {k_10g, phys_front_port_map_brisca_10g, fplate_port_map_brisca_10g,
             np_local_port_map_brisca_10g, &brisca_card_phys_map_10ge, &brisca_card_fplate_map_10ge,
             &brisca_card_np_port_map_10ge, brisca_phys_2_fplate_cage_10GE,
             CVN_NP_CHECK("index < brisca_card_np_info->port_subslot_10g")},
        },
    .ifsubinst_cages = 8,
};

using brisca = cage::engine<k_brisca>;

} // namespace

extern "C" {

void cvn_np_brisca_api_fill(cvn_np_api *table) { brisca::fill(table); }

void cvn_np_brisca_init(void) { brisca::init(&cvn_np_api_brisca); }

} // extern "C"
