// cvn_np_lib_brisca_4p.cpp - the four-cage brisca cards: four NPs, one NP
// per complex, cage n belongs to NP n, the same module choices per cage as
// brisca.  Every cage is the first and only cage of its NP, so its ports
// carry brisca's even-cage NP-local numbers.  Beside the tables it differs
// from brisca in: slot 4 answers the cage list without asking the platform;
// slots 11, 12, 16 and 18 do not look at a failed query (16 and 18 always
// answer 0); slot 45's cage bound is 3.  Its np_info keeps brisca's
// eight-cage faceplate bounds.

#include "cvn_np_cage_engine.h"
#include "cvn_np_lib_tables.h"

namespace cage = cvn_np::cage;
using cage::map_row;

namespace {

// The wiring of each speed, from which its tables are generated.
constexpr cage::wiring k_10g = {np_info_brisca_4p, cage::k_10ge, cvn_np_port_mapping_brisca_4p_10g};
constexpr cage::wiring k_40g = {np_info_brisca_4p, cage::k_40ge, cvn_np_port_mapping_brisca_4p_40g};
constexpr cage::wiring k_100g = {np_info_brisca_4p, cage::k_100ge,
                                 cvn_np_port_mapping_brisca_4p_100g};

} // namespace

extern "C" {

constexpr np_info np_info_brisca_4p = cage::info_of({4, 4, 8, 8, 1, 2, 1, 10});

constexpr port_info port_info_brisca_4p_10g[2] = {{10, CVN_NP_PORT_TYPE_10GE}, cage::k_list_end};
constexpr port_info port_info_brisca_4p_40g[2] = {{2, CVN_NP_PORT_TYPE_40GE}, cage::k_list_end};
constexpr port_info port_info_brisca_4p_100g[2] = {{1, CVN_NP_PORT_TYPE_100GE}, cage::k_list_end};
constexpr port_info port_info_brisca_4p_combo[2] = {{4, CVN_NP_PORT_TYPE_COMBO}, cage::k_list_end};
constexpr port_info brisca_4p_dummy_port_info[1] = {cage::k_list_end};
constexpr const port_info *port_info_brisca_4p[6] = {
    cage::k_no_ports,        port_info_brisca_4p_10g,  port_info_brisca_4p_combo,
    port_info_brisca_4p_40g, port_info_brisca_4p_100g, nullptr,
};

constexpr port_mapping_entry cvn_np_port_mapping_brisca_4p_10g[41] = {
    CVN_NP_ROWS(k_10g.entry, 4, 1)};
constexpr port_mapping_entry cvn_np_port_mapping_brisca_4p_40g[9] = {
    CVN_NP_ROWS(k_40g.entry, 0, 9)};
constexpr port_mapping_entry cvn_np_port_mapping_brisca_4p_100g[5] = {
    CVN_NP_ROWS(k_100g.entry, 0, 5)};

// The NP-local maps keep brisca's room (80, 16, 16); past the card's
// entries they hold NULL, which no NP's block reaches.
constexpr map_row np_local_port_map_brisca_4p_10g[80] = {CVN_NP_ROWS(k_10g.in_order, 8, 0)};
constexpr map_row np_local_port_map_brisca_4p_40g[16] = {CVN_NP_ROWS(k_40g.in_order, 1, 6)};
constexpr map_row np_local_port_map_brisca_4p_100g[16] = {CVN_NP_ROWS(k_100g.in_order, 1, 6)};
constexpr map_row fplate_port_map_brisca_4p_10g[40] = {CVN_NP_ROWS(k_10g.in_order, 4, 0)};
constexpr map_row fplate_port_map_brisca_4p_40g[8] = {CVN_NP_ROWS(k_40g.in_order, 0, 8)};
constexpr map_row fplate_port_map_brisca_4p_100g[4] = {CVN_NP_ROWS(k_100g.in_order, 0, 4)};
constexpr map_row phys_front_port_map_brisca_4p_10g[40] = {CVN_NP_ROWS(k_10g.in_order, 4, 0)};
constexpr map_row phys_front_port_map_brisca_4p_40g[8] = {CVN_NP_ROWS(k_40g.in_order, 0, 8)};
constexpr map_row phys_front_port_map_brisca_4p_100g[4] = {CVN_NP_ROWS(k_100g.in_order, 0, 4)};

constexpr int32_t brisca_4p_phys_2_fplate_cage_10GE[64] = {CVN_NP_ROWS(k_10g.fplate_index, 6, 4)};
constexpr int32_t brisca_4p_phys_2_fplate_cage_40GE[64] = {CVN_NP_ROWS(k_40g.fplate_index, 6, 4)};
constexpr int32_t brisca_4p_phys_2_fplate_cage_100GE[64] = {CVN_NP_ROWS(k_100g.fplate_index, 6, 4)};

cage::current_map brisca_4p_card_phys_map_100ge, brisca_4p_card_fplate_map_100ge,
    brisca_4p_card_np_port_map_100ge;
cage::current_map brisca_4p_card_phys_map_40ge, brisca_4p_card_fplate_map_40ge,
    brisca_4p_card_np_port_map_40ge;
cage::current_map brisca_4p_card_phys_map_10ge, brisca_4p_card_fplate_map_10ge,
    brisca_4p_card_np_port_map_10ge;
const np_info *brisca_4p_card_np_info;
const port_info *const *brisca_4p_card_port_info;
card_version brisca_4p_card_version;
subslot_info brisca_4p_card_subslot_info;
cvn_np_api cvn_np_api_brisca_4p;

} // extern "C"

namespace {

// Each speed checks its tables against its wiring, row for row.
constexpr cage::family k_brisca_4p = {
    .path = "platforms/corvan/lc/lc_tessel/lib/src/cvn_np_lib_brisca_4p.cpp",
    .text =
        {
            .subslot = CVN_NP_CHECK("subslot < brisca_4p_card_np_info->num_subslot"),
            .ifsubinst = CVN_NP_CHECK("ifsubinst < brisca_4p_card_np_info->num_cage"),
            .cage_id = CVN_NP_CHECK("cage_id.ifsubsys < brisca_4p_card_np_info->num_cage"),
            .subslot_num = CVN_NP_CHECK("subslot_num < brisca_4p_card_np_info->num_subslot"),
            .ifsubsys_num = CVN_NP_CHECK("ifsubsys_num < brisca_4p_card_np_info->num_cage"),
            .np_num = CVN_NP_CHECK("np_num < brisca_4p_card_np_info->num_complex"),
            .np_id = CVN_NP_CHECK("np_id < cvn_np_how_many()"),
            .np_complex = CVN_NP_CHECK("np_complex < cvn_np_how_many()"),
            .front_needed = CVN_NP_CHECK("phys_front_port != NULL"),
            .port_type_needed = CVN_NP_CHECK("port_type != NULL"),
            .fplate_needed = CVN_NP_CHECK("fplate_port != NULL"),
            .unknown = CVN_NP_CHECK("0"),
        },
    .tables = {&np_info_brisca_4p, port_info_brisca_4p},
    .card_np_info = &brisca_4p_card_np_info,
    .card_port_info = &brisca_4p_card_port_info,
    .card_version_record = &brisca_4p_card_version,
    .card_subslot_info = &brisca_4p_card_subslot_info,
    .dummy_port_info = brisca_4p_dummy_port_info,
    .speeds =
        {
            {k_100g, phys_front_port_map_brisca_4p_100g, fplate_port_map_brisca_4p_100g,
             np_local_port_map_brisca_4p_100g, &brisca_4p_card_phys_map_100ge,
             &brisca_4p_card_fplate_map_100ge, &brisca_4p_card_np_port_map_100ge,
             brisca_4p_phys_2_fplate_cage_100GE,
             CVN_NP_CHECK("index < brisca_4p_card_np_info->port_subslot_100g")},
            {k_40g, phys_front_port_map_brisca_4p_40g, fplate_port_map_brisca_4p_40g,
             np_local_port_map_brisca_4p_40g, &brisca_4p_card_phys_map_40ge,
             &brisca_4p_card_fplate_map_40ge, &brisca_4p_card_np_port_map_40ge,
             brisca_4p_phys_2_fplate_cage_40GE,
             CVN_NP_CHECK("index < brisca_4p_card_np_info->port_subslot_40g")},
            {k_10g, phys_front_port_map_brisca_4p_10g, fplate_port_map_brisca_4p_10g,
             np_local_port_map_brisca_4p_10g, &brisca_4p_card_phys_map_10ge,
             &brisca_4p_card_fplate_map_10ge, &brisca_4p_card_np_port_map_10ge,
             brisca_4p_phys_2_fplate_cage_10GE,
             CVN_NP_CHECK("index < brisca_4p_card_np_info->port_subslot_10g")},
        },
    .port_info_answer = cage::slot4_answer::cage_list,
    .query_status_returned = false, // a failed query counts as an empty cage
    .ifsubinst_cages = 4,
};

using brisca_4p = cage::engine<k_brisca_4p>;

} // namespace

extern "C" {

void cvn_np_brisca_4p_api_fill(cvn_np_api *table) { brisca_4p::fill(table); }

void cvn_np_brisca_4p_init(void) { brisca_4p::init(&cvn_np_api_brisca_4p); }

} // extern "C"
