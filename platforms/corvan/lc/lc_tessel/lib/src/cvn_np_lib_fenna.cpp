// cvn_np_lib_fenna.cpp - the fenna cards: the six-cage sister of brisca,
// three NPs, one NP per complex, one subslot; cages 2n and 2n+1 belong to
// NP n.  It runs brisca's operations with these differences: no 40GE_ALT
// modules, slot 40 counts an NP's ports rather than one cage's, slot 15
// rejects NP-local ports above 254, and slot 45 is left empty.

#include "cvn_np_cage_engine.h"
#include "cvn_np_lib_tables.h"

namespace cage = cvn_np::cage;
using cage::map_row;

namespace {

// The wiring of each speed, from which its tables are generated.
constexpr cage::wiring k_10g = {np_info_fenna, cage::k_10ge, cvn_np_port_mapping_fenna_10g};
constexpr cage::wiring k_40g = {np_info_fenna, cage::k_40ge, cvn_np_port_mapping_fenna_40g};
constexpr cage::wiring k_100g = {np_info_fenna, cage::k_100ge, cvn_np_port_mapping_fenna_100g};

} // namespace

extern "C" {

constexpr np_info np_info_fenna = cage::info_of({3, 6, 6, 8, 1, 2, 0, 10});

constexpr port_info port_info_fenna_10g[2] = {{10, CVN_NP_PORT_TYPE_10GE}, cage::k_list_end};
constexpr port_info port_info_fenna_40g[2] = {{2, CVN_NP_PORT_TYPE_40GE}, cage::k_list_end};
constexpr port_info port_info_fenna_100g[2] = {{1, CVN_NP_PORT_TYPE_100GE}, cage::k_list_end};
constexpr port_info fenna_dummy_port_info[1] = {cage::k_list_end};
constexpr const port_info *port_info_fenna[6] = {
    cage::k_no_ports,    port_info_fenna_10g,  cage::k_combo_list<6>,
    port_info_fenna_40g, port_info_fenna_100g, nullptr,
};

constexpr port_mapping_entry cvn_np_port_mapping_fenna_10g[61] = {CVN_NP_ROWS(k_10g.entry, 6, 1)};
constexpr port_mapping_entry cvn_np_port_mapping_fenna_40g[13] = {CVN_NP_ROWS(k_40g.entry, 1, 3)};
constexpr port_mapping_entry cvn_np_port_mapping_fenna_100g[7] = {CVN_NP_ROWS(k_100g.entry, 0, 7)};

// As on brisca, the entries run NP by NP: every map of a speed is its
// table in order.
constexpr map_row np_local_port_map_fenna_10g[60] = {CVN_NP_ROWS(k_10g.in_order, 6, 0)};
constexpr map_row np_local_port_map_fenna_40g[12] = {CVN_NP_ROWS(k_40g.in_order, 1, 2)};
constexpr map_row np_local_port_map_fenna_100g[6] = {CVN_NP_ROWS(k_100g.in_order, 0, 6)};
constexpr map_row fplate_port_map_fenna_10g[60] = {CVN_NP_ROWS(k_10g.in_order, 6, 0)};
constexpr map_row fplate_port_map_fenna_40g[12] = {CVN_NP_ROWS(k_40g.in_order, 1, 2)};
constexpr map_row fplate_port_map_fenna_100g[6] = {CVN_NP_ROWS(k_100g.in_order, 0, 6)};
constexpr map_row phys_front_port_map_fenna_10g[60] = {CVN_NP_ROWS(k_10g.in_order, 6, 0)};
constexpr map_row phys_front_port_map_fenna_40g[12] = {CVN_NP_ROWS(k_40g.in_order, 1, 2)};
constexpr map_row phys_front_port_map_fenna_100g[6] = {CVN_NP_ROWS(k_100g.in_order, 0, 6)};

constexpr int32_t fenna_phys_2_fplate_cage_10GE[96] = {CVN_NP_ROWS(k_10g.fplate_index, 9, 6)};
constexpr int32_t fenna_phys_2_fplate_cage_40GE[96] = {CVN_NP_ROWS(k_40g.fplate_index, 9, 6)};
constexpr int32_t fenna_phys_2_fplate_cage_100GE[96] = {CVN_NP_ROWS(k_100g.fplate_index, 9, 6)};

cage::current_map fenna_card_phys_map_100ge, fenna_card_fplate_map_100ge,
    fenna_card_np_port_map_100ge;
cage::current_map fenna_card_phys_map_40ge, fenna_card_fplate_map_40ge, fenna_card_np_port_map_40ge;
cage::current_map fenna_card_phys_map_10ge, fenna_card_fplate_map_10ge, fenna_card_np_port_map_10ge;
const np_info *fenna_card_np_info;
const port_info *const *fenna_card_port_info;
card_version fenna_card_version;
subslot_info fenna_card_subslot_info;
cvn_np_api cvn_np_api_fenna;

} // extern "C"

namespace {

// Each speed checks its tables against its wiring, row for row.
constexpr cage::family k_fenna = {
    .path = "platforms/corvan/lc/lc_tessel/lib/src/cvn_np_lib_fenna.cpp",
    .text =
        {
            .subslot = CVN_NP_CHECK("subslot < fenna_card_np_info->num_subslot"),
            .ifsubinst = CVN_NP_CHECK("ifsubinst < fenna_card_np_info->num_cage"),
            .cage_id = CVN_NP_CHECK("cage_id.ifsubsys < fenna_card_np_info->num_cage"),
            .subslot_num = CVN_NP_CHECK("subslot_num < fenna_card_np_info->num_subslot"),
            .ifsubsys_num = CVN_NP_CHECK("ifsubsys_num < fenna_card_np_info->num_cage"),
            .np_num = CVN_NP_CHECK("np_num < fenna_card_np_info->num_complex"),
            .np_id = CVN_NP_CHECK("np_id < cvn_np_how_many()"),
            .np_complex = CVN_NP_CHECK("np_complex < cvn_np_how_many()"),
            .front_needed = CVN_NP_CHECK("phys_front_port != NULL"),
            .port_type_needed = CVN_NP_CHECK("port_type != NULL"),
            .fplate_needed = CVN_NP_CHECK("fplate_port != NULL"),
            .unknown = CVN_NP_CHECK("0"),
        },
    .tables = {&np_info_fenna, port_info_fenna},
    .card_np_info = &fenna_card_np_info,
    .card_port_info = &fenna_card_port_info,
    .card_version_record = &fenna_card_version,
    .card_subslot_info = &fenna_card_subslot_info,
    .dummy_port_info = fenna_dummy_port_info,
    .speeds =
        {
            {k_100g, phys_front_port_map_fenna_100g, fplate_port_map_fenna_100g,
             np_local_port_map_fenna_100g, &fenna_card_phys_map_100ge, &fenna_card_fplate_map_100ge,
             &fenna_card_np_port_map_100ge, fenna_phys_2_fplate_cage_100GE,
             CVN_NP_CHECK("index < fenna_card_np_info->port_subslot_100g")},
            {k_40g, phys_front_port_map_fenna_40g, fplate_port_map_fenna_40g,
             np_local_port_map_fenna_40g, &fenna_card_phys_map_40ge, &fenna_card_fplate_map_40ge,
             &fenna_card_np_port_map_40ge, fenna_phys_2_fplate_cage_40GE,
             CVN_NP_CHECK("index < fenna_card_np_info->port_subslot_40g")},
            {k_10g, phys_front_port_map_fenna_10g, fplate_port_map_fenna_10g,
             np_local_port_map_fenna_10g, &fenna_card_phys_map_10ge, &fenna_card_fplate_map_10ge,
             &fenna_card_np_port_map_10ge, fenna_phys_2_fplate_cage_10GE,
             CVN_NP_CHECK("index < fenna_card_np_info->port_subslot_10g")},
        },
    .type_count = 3, // no 40GE_ALT modules
    .local_ports_per_np = true,
    .max_np_port = 254,
};

using fenna = cage::engine<k_fenna>;

} // namespace

extern "C" {

void cvn_np_fenna_api_fill(cvn_np_api *table) { fenna::fill(table); }

void cvn_np_fenna_init(void) { fenna::init(&cvn_np_api_fenna); }

void aux_cvn_np_info_to_mapping_info_fenna(uint32_t np_num, uint32_t np_port, uint32_t ifsub_type,
                                           uint32_t *front, uint32_t *fplate_port,
                                           uint32_t *port_type)
{
    fenna::info_to_mapping_info(np_num, np_port, ifsub_type, front, fplate_port, port_type);
}

void aux_np_port_to_mapping_info_fenna(const port_mapping_entry *const *entries, uint32_t np_port,
                                       uint32_t count, uint32_t *front, uint32_t *fplate_port,
                                       uint32_t *port_type)
{
    fenna::np_port_to_mapping_info(entries, np_port, count, front, fplate_port, port_type);
}

} // extern "C"
