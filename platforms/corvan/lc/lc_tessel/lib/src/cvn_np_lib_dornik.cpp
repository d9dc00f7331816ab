// cvn_np_lib_dornik.cpp - the dornik cards: 100GE only, one port per cage,
// two cages per NP, one NP per complex, one subslot.  The full card has
// twelve cages on six NPs, dornik_lite four cages on two; both share one set
// of mapping tables and differ in np_info and port-info array, chosen by
// the global cardtype at init.  The one module type is 0x10030.  Beside the
// tables it differs from brisca in: slot 4 answers the 100GE list; slots 8-10
// answer 0 on a failed query; slots 13 and 40 count an NP's ports; slot 15
// looks every NP-local port up as 0x10030; slot 45's cage bound is 12 on
// both sizes.

#include "cvn_np_cage_engine.h"
#include "cvn_np_lib_tables.h"

namespace cage = cvn_np::cage;
using cage::map_row;

namespace {

// The wiring of the full card's cages; their NP-local ports follow no rule,
// so the mapping table is listed.
constexpr cage::wiring k_100g = {np_info_dornik, cage::k_100ge, cvn_np_port_mapping_dornik_100g,
                                 /* listed */ true};

} // namespace

extern "C" {

constexpr np_info np_info_dornik = cage::info_of({6, 12, 12, 12, 1, 0, 0, 0});
constexpr np_info np_info_dornik_lite = cage::info_of({2, 4, 4, 4, 1, 0, 0, 0});

constexpr port_info dornik_dummy_port_info[1] = {cage::k_list_end};
constexpr port_info port_info_dornik_100g[2] = {{1, CVN_NP_PORT_TYPE_100GE}, cage::k_list_end};
// Only the COMBO and 100GE positions hold lists of their own.
constexpr const port_info *port_info_dornik[6] = {
    dornik_dummy_port_info, dornik_dummy_port_info, cage::k_combo_list<12>,
    dornik_dummy_port_info, port_info_dornik_100g,  nullptr,
};
constexpr const port_info *port_info_dornik_lite[6] = {
    dornik_dummy_port_info, dornik_dummy_port_info, cage::k_combo_list<4>,
    dornik_dummy_port_info, port_info_dornik_100g,  nullptr,
};

// Cage c: front port 16c, NP c / 2.  NPs 0 and 1 carry port 116 on their
// even cage, NPs 2 to 5 port 117: the wiring has no rule, so it is listed.
constexpr port_mapping_entry cvn_np_port_mapping_dornik_100g[13] = {
    {0x00, 0, 116, 0x00, 4}, {0x10, 0, 117, 0x10, 4}, {0x20, 1, 116, 0x20, 4},
    {0x30, 1, 117, 0x30, 4}, {0x40, 2, 117, 0x40, 4}, {0x50, 2, 116, 0x50, 4},
    {0x60, 3, 117, 0x60, 4}, {0x70, 3, 116, 0x70, 4}, {0x80, 4, 117, 0x80, 4},
    {0x90, 4, 116, 0x90, 4}, {0xA0, 5, 117, 0xA0, 4}, {0xB0, 5, 116, 0xB0, 4},
    cage::k_end_entry,
};

constexpr map_row np_local_port_map_dornik_100g[12] = {CVN_NP_ROWS(k_100g.in_order, 1, 2)};
constexpr map_row fplate_port_map_dornik_100g[12] = {CVN_NP_ROWS(k_100g.in_order, 1, 2)};
constexpr map_row phys_front_port_map_dornik_100g[12] = {CVN_NP_ROWS(k_100g.in_order, 1, 2)};

constexpr int32_t dornik_phys_2_fplate_ifsub_100GE[192] = {CVN_NP_ROWS(k_100g.fplate_index, 19, 2)};

cage::current_map dornik_card_phys_map_100ge, dornik_card_fplate_map_100ge,
    dornik_card_np_port_map_100ge;
const np_info *dornik_card_np_info;
const port_info *const *dornik_card_port_info;
card_version dornik_card_version;
subslot_info dornik_card_subslot_info;
cvn_np_api cvn_np_api_dornik;

} // extern "C"

namespace {

constexpr cage::ifsub_type k_types[] = {
    {CVN_NP_IFSUB_TYPE_DORNIK_100GE, cage::k_100ge, &np_info::port_cage_100g},
};

// 0x3D02C3 and 0x3D02C6 are full cards; every other type runs as a lite one.
cage::card_tables tables_for_card()
{
    if (cardtype == 0x3D02C3 || cardtype == 0x3D02C6)
        return {&np_info_dornik, port_info_dornik};
    return {&np_info_dornik_lite, port_info_dornik_lite};
}

constexpr uint32_t np_port_ifsub_type(uint32_t) { return CVN_NP_IFSUB_TYPE_DORNIK_100GE; }

// The speed checks its tables against its wiring, row for row.
constexpr cage::family k_dornik = {
    .path = "platforms/corvan/lc/lc_tessel/lib/src/cvn_np_lib_dornik.cpp",
    .text =
        {
            .subslot = CVN_NP_CHECK("subslot < dornik_card_np_info->num_subslot"),
            .ifsubinst = CVN_NP_CHECK("ifsub < dornik_card_np_info->num_cage"),
            .cage_id = CVN_NP_CHECK("ifsubsys_id.ifsubsys < dornik_card_np_info->num_cage"),
            .subslot_num = CVN_NP_CHECK("subslot_num < dornik_card_np_info->num_subslot"),
            .ifsubsys_num = CVN_NP_CHECK("ifsubsys_num < dornik_card_np_info->num_cage"),
            .np_num = CVN_NP_CHECK("np_num < dornik_card_np_info->num_complex"),
            .np_id = CVN_NP_CHECK("np_id < cvn_np_how_many()"),
            .np_complex = CVN_NP_CHECK("np_complex < cvn_np_how_many()"),
            .front_needed = CVN_NP_CHECK("phys_front_port != NULL"),
            .port_type_needed = CVN_NP_CHECK("port_type != NULL"),
            .fplate_needed = CVN_NP_CHECK("fplate_port != NULL"),
            .unknown = CVN_NP_CHECK("0"),
        },
    .tables = {&np_info_dornik, port_info_dornik}, // what the compile-time answers assume
    .tables_for_card = tables_for_card,
    .card_np_info = &dornik_card_np_info,
    .card_port_info = &dornik_card_port_info,
    .card_version_record = &dornik_card_version,
    .card_subslot_info = &dornik_card_subslot_info,
    .dummy_port_info = dornik_dummy_port_info,
    .speeds =
        {
            {k_100g, phys_front_port_map_dornik_100g, fplate_port_map_dornik_100g,
             np_local_port_map_dornik_100g, &dornik_card_phys_map_100ge,
             &dornik_card_fplate_map_100ge, &dornik_card_np_port_map_100ge,
             dornik_phys_2_fplate_ifsub_100GE,
             CVN_NP_CHECK("index < dornik_card_np_info->port_subslot_100g")},
        }, // no 40GE or 10GE cages
    .types = k_types,
    .type_count = std::size(k_types),
    .port_info_answer = cage::slot4_answer::first_type,
    .local_ports_per_np = true,
    .failed_query_skips_mapping = true,
    .ifsubinst_cages = 12,
    .np_port_ifsub_type = np_port_ifsub_type,
};

using dornik = cage::engine<k_dornik>;

} // namespace

extern "C" {

void cvn_np_dornik_api_fill(cvn_np_api *table) { dornik::fill(table); }

void cvn_np_dornik_init(void) { dornik::init(&cvn_np_api_dornik); }

} // extern "C"
