// cvn_np_lib_1slice_tolvar.cpp - the tolvar 1-slice cards: one NP serving
// two bays (subslots 0 and 1), each holding one EP that the platform
// reports.  It runs the 2-slice card's operations with these differences:
// each bay has its own EP data table, so a type's row depends on the bay;
// all ports belong to NP 0 and the bays are told apart by NP-local port
// ranges; a split instance's entry is found through an index map by the
// port's bits 5..0; operations that start from the NP or its complex walk
// both bays; slot 17 gives the first front port of one bay.

#include <functional>

#include "cvn_np_table_rows.h"
#include "cvn_np_tolvar_engine.h"

namespace tv = cvn_np::tolvar;

namespace {

constexpr uint32_t k_spare = 1;

// Bay 0's EPs are the 2-slice card's; bay 1's use the NP's upper port
// ranges: (count, first front port, first NP port, NP-port step).
constexpr tv::ep_wiring k_b1_2x10g = {CVN_NP_PORT_TYPE_10GE, 2, {2, 0, 204, 2}, {}};
constexpr tv::ep_wiring k_b1_4x10g = {CVN_NP_PORT_TYPE_10GE, 4, {4, 0, 204, 2}, {}};
constexpr tv::ep_wiring k_b1_8x10g = {CVN_NP_PORT_TYPE_10GE, 8, {8, 0, 204, 1}, {}};
constexpr tv::ep_wiring k_b1_2x40g = {CVN_NP_PORT_TYPE_40GE, 2, {2, 0, 99, 1}, {}};
constexpr tv::ep_wiring k_b1_1x40g = {CVN_NP_PORT_TYPE_40GE, 1, {1, 0, 99, 1}, {}};
constexpr tv::ep_wiring k_b1_20x_none = {
    CVN_NP_PORT_TYPE_NONE, 20, {10, 0, 128, 1}, {10, 10, 140, 1}};
constexpr tv::ep_wiring k_b1_100g = {CVN_NP_PORT_TYPE_100GE, 1, {1, 0, 117, 1}, {}};
constexpr tv::ep_wiring k_b1_10g = {CVN_NP_PORT_TYPE_10GE, 10, {10, 0, 204, 1}, {}};
constexpr tv::ep_wiring k_b1_40g = {CVN_NP_PORT_TYPE_40GE, 2, {2, 0, 99, 1}, {}};

// Entry index of a split instance's port by its bits 5..0 (instance in bits
// 5..4), `ports` ports per instance; CVN_NP_NO_PORT where there is none.
template <uint32_t ports> constexpr int32_t split_entry_index(std::size_t bits)
{
    const std::size_t instance = bits >> 4, port = bits & 0x0F;
    return instance < 2 && port < ports ? static_cast<int32_t>(instance * ports + port)
                                        : CVN_NP_NO_PORT;
}

} // namespace

extern "C" {

// (ep_type, spare, np_port_base, np_port_span) over the EP's ports.
constexpr cvn_np_ep_data cvn_np_lib_tv_1slice_bay0_ep_info_types[12] = {
    tv::ep_row<tv::k_2x10g>(CVN_NP_IFSUB_TYPE_TV_2X10GE, k_spare, 192, 201),
    tv::ep_row<tv::k_4x10g>(CVN_NP_IFSUB_TYPE_TV_4X10GE, k_spare, 192, 213),
    tv::ep_row<tv::k_8x10g>(CVN_NP_IFSUB_TYPE_TV_8X10GE, k_spare, 192, 213),
    tv::ep_row<tv::k_2x40g>(CVN_NP_IFSUB_TYPE_TV_2X40GE, k_spare, 96, 100),
    tv::ep_row<tv::k_1x40g>(CVN_NP_IFSUB_TYPE_TV_1X40GE, k_spare, 96, 100),
    tv::ep_row<tv::k_20x_none>(CVN_NP_IFSUB_TYPE_TV_20X_NONE, k_spare, 192, 213),
    tv::ep_row<tv::k_16x10g>(CVN_NP_IFSUB_TYPE_TV_16X10GE, k_spare, 192, 213),
    tv::ep_row<tv::k_20x10g>(CVN_NP_IFSUB_TYPE_TV_20X10GE, k_spare, 192, 201),
    tv::ep_row<tv::k_20x10g>(CVN_NP_IFSUB_TYPE_TV_20X10GE_B, k_spare, 192, 201),
    tv::ep_row<tv::k_100g_pair>(CVN_NP_IFSUB_TYPE_100GE, k_spare, 116, 117),
    tv::ep_row<tv::k_10g_pair>(CVN_NP_IFSUB_TYPE_10GE, k_spare, 192, 213),
    tv::ep_row<tv::k_40g_pair>(CVN_NP_IFSUB_TYPE_40GE, k_spare, 96, 100),
};

// The card's EP data table is bay 0's.
constexpr np_info np_info_1slice_tv = tv::card_np_info(1, cvn_np_lib_tv_1slice_bay0_ep_info_types);

constexpr cvn_np_ep_data cvn_np_lib_tv_1slice_bay1_ep_info_types[9] = {
    tv::ep_row<k_b1_2x10g>(CVN_NP_IFSUB_TYPE_TV_2X10GE, k_spare, 192, 213),
    tv::ep_row<k_b1_4x10g>(CVN_NP_IFSUB_TYPE_TV_4X10GE, k_spare, 192, 213),
    tv::ep_row<k_b1_8x10g>(CVN_NP_IFSUB_TYPE_TV_8X10GE, k_spare, 192, 213),
    tv::ep_row<k_b1_2x40g>(CVN_NP_IFSUB_TYPE_TV_2X40GE, k_spare, 96, 100),
    tv::ep_row<k_b1_1x40g>(CVN_NP_IFSUB_TYPE_TV_1X40GE, k_spare, 96, 100),
    tv::ep_row<k_b1_20x_none>(CVN_NP_IFSUB_TYPE_TV_20X_NONE, k_spare, 192, 213),
    tv::ep_row<k_b1_100g>(CVN_NP_IFSUB_TYPE_100GE, k_spare, 116, 117),
    tv::ep_row<k_b1_10g>(CVN_NP_IFSUB_TYPE_10GE, k_spare, 204, 213),
    tv::ep_row<k_b1_40g>(CVN_NP_IFSUB_TYPE_40GE, k_spare, 99, 100),
};

constexpr int32_t tv_1slice_phys_2_fplate_cage_10GE[32] = {
    CVN_NP_ROWS(split_entry_index<10>, 3, 2)};
constexpr int32_t tv_1slice_phys_2_fplate_cage_40GE[32] = {CVN_NP_ROWS(split_entry_index<2>, 3, 2)};

constexpr port_info tv_1slice_dummy_port_info[1] = {{0, CVN_NP_PORT_TYPE_END}};

const np_info *tv_1slice_card_np_info;
const cvn_np_ep_data *cvn_1slice_np_lib_info_types;
card_version tv_1slice_card_version;
subslot_info tv_1slice_card_subslot_info;
cvn_np_api cvn_np_api_1slice_tolvar;

} // extern "C"

// Telling entries: bay 1 is the NP's upper half.
static_assert(cvn_np_lib_tv_1slice_bay0_ep_info_types[10].entries[13]->np_port == 207);
static_assert(cvn_np_lib_tv_1slice_bay0_ep_info_types[10].entries[13]->phys_front_port == 19);
static_assert(cvn_np_lib_tv_1slice_bay1_ep_info_types[0].entries[1]->np_port == 206);
static_assert(cvn_np_lib_tv_1slice_bay1_ep_info_types[5].entries[19]->np_port == 149);
// The index maps follow their rule in every row.
static_assert(cvn_np::common::rows_follow(tv_1slice_phys_2_fplate_cage_10GE, split_entry_index<10>,
                                          std::equal_to<>()) &&
              cvn_np::common::rows_follow(tv_1slice_phys_2_fplate_cage_40GE, split_entry_index<2>,
                                          std::equal_to<>()));
static_assert(tv_1slice_phys_2_fplate_cage_10GE[0x13] == 13 &&
              tv_1slice_phys_2_fplate_cage_10GE[0x1A] == 255);
static_assert(tv_1slice_phys_2_fplate_cage_40GE[0x11] == 3 &&
              tv_1slice_phys_2_fplate_cage_40GE[0x02] == 255);

namespace {

// Each bay has its own table.
constexpr std::array<tv::type_index, 2> k_bay_rows = {
    tv::rows_by_type(cvn_np_lib_tv_1slice_bay0_ep_info_types),
    tv::rows_by_type(cvn_np_lib_tv_1slice_bay1_ep_info_types)};

// The row of a type in the bay's own table; none for another subslot.
constexpr const cvn_np_ep_data *bay_ep_data_find(uint32_t subslot, uint32_t type)
{
    const uint32_t bay = subslot & 0xFFFF;
    return bay < std::size(k_bay_rows) ? tv::row_for(k_bay_rows[bay], type) : nullptr;
}

// The half of the NP's ports an NP-local port is in: bay b's 20-port EP
// without port type is in half b; bay 0's first instance in half 0, its
// second in half 1; -1 for neither.
constexpr tv::np_port_table half_of_np_port{[](uint32_t np_port) {
    for (int bay = 0; bay < 2; ++bay) {
        const cvn_np_ep_data &none = *tv::row_for(k_bay_rows[bay], CVN_NP_IFSUB_TYPE_TV_20X_NONE);
        if (tv::in_np_ports(none.entries, none.num_ports, np_port))
            return bay;
    }
    return tv::instance_of_np_port(cvn_np_lib_tv_1slice_bay0_ep_info_types, np_port);
}};
static_assert(half_of_np_port(37) == 0 && half_of_np_port(128) == 1 && half_of_np_port(213) == 1 &&
              half_of_np_port(202) < 0);

// The lower half is bay 0's; the upper one belongs to bay 0's second
// instance, to bay 0's 20-port EP, or else to bay 1.  Both bays must answer.
tv::place_answer bay_of_np_port(uint32_t, uint32_t np_port)
{
    const int upper = half_of_np_port(np_port);
    if (upper < 0)
        return tv::k_not_found;
    const tv::place_answer bay0 = tv::ask(0, CVN_NP_IFSUB_ANY);
    const tv::place_answer bay1 = tv::ask(1, CVN_NP_IFSUB_ANY);
    if (bay0.status != 0 || bay1.status != 0)
        return tv::k_not_found;
    if (upper == 0)
        return tv::place_at(0, 0);
    if (tv::has_second_instance(bay0.type))
        return tv::place_at(0, 1);
    const bool bay0_wide =
        bay0.type == CVN_NP_IFSUB_TYPE_TV_20X10GE || bay0.type == CVN_NP_IFSUB_TYPE_TV_20X10GE_B;
    return tv::place_at(bay0_wide ? 0 : 1, 0);
}

// A split instance's entry through the index map of its speed;
// CVN_NP_NO_PORT, past every row, for none.
uint64_t split_entry(uint32_t port, uint32_t type, const cvn_np_ep_data &, bool)
{
    const int32_t *map = type == CVN_NP_IFSUB_TYPE_10GE ? tv_1slice_phys_2_fplate_cage_10GE
                                                        : tv_1slice_phys_2_fplate_cage_40GE;
    const uint32_t bits = port & 0x3F;
    return bits < std::size(tv_1slice_phys_2_fplate_cage_10GE) ? static_cast<uint32_t>(map[bits])
                                                               : CVN_NP_NO_PORT;
}

constexpr tv::family k_tv_1slice = {
    .path = "platforms/corvan/lc/lc_tessel/lib/src/cvn_np_lib_1slice_tolvar.cpp",
    .text =
        {
            .subslot = CVN_NP_CHECK("subslot < tv_1slice_card_np_info->num_subslot"),
            .subslot_num = CVN_NP_CHECK("subslot_num < tv_1slice_card_np_info->num_subslot"),
            .np_num = CVN_NP_CHECK("np_num < tv_1slice_card_np_info->num_complex"),
            .np_id = CVN_NP_CHECK("np_id < cvn_np_how_many()"),
            .np_complex = CVN_NP_CHECK("np_complex < cvn_np_how_many()"),
            .front_needed = CVN_NP_CHECK("phys_front_port != NULL"),
            .port_type_needed = CVN_NP_CHECK("port_type != NULL"),
            .fplate_needed = CVN_NP_CHECK("fplate_port != NULL"),
            .bay = CVN_NP_CHECK("subslot < CVN_NP_TOTAL_SUBSLOT_TOLVAR"),
            .row_port_type = CVN_NP_CHECK("port_type == ep_data->port_type"),
            .unknown = CVN_NP_CHECK("0"),
            .first_port_bay = CVN_NP_CHECK("subslot < CVN_NP_TOTAL_SUBSLOTS"),
        },
    .np_info_table = &np_info_1slice_tv,
    .card_np_info = &tv_1slice_card_np_info,
    .info_types_table = cvn_np_lib_tv_1slice_bay0_ep_info_types,
    .card_info_types = &cvn_1slice_np_lib_info_types,
    .card_version_record = &tv_1slice_card_version,
    .card_subslot_info = &tv_1slice_card_subslot_info,
    .dummy_port_info = tv_1slice_dummy_port_info,
    .row_of = bay_ep_data_find,
    .rows_by_current_record = false,
    .place_np_port = bay_of_np_port,
    .instance_entry = split_entry,
    .one_np_for_both_bays = true,
    .alt_40ge_mapped = false, // neither bay has a row for 0x10003
    .first_front_port_hides_query_status = true,
};

} // namespace

using E = tv::engine<k_tv_1slice>;

extern "C" {

// The family functions.
const card_version *cvn_np_tv_1slice_version_get(void) { return E::version_get(); }
uint32_t cvn_tv_1slice_max_mtu(void) { return E::max_mtu(); }
uint32_t cvn_np_tv_1slice_how_many(void) { return E::how_many(); }
uint32_t cvn_np_tv_1slice_chip_how_many(void) { return E::chip_how_many(); }
const port_info *cvn_np_tv_1slice_port_info_get(void) { return E::port_info_get(); }
const subslot_info *cvn_np_tv_1slice_subslot_info_get(void) { return E::subslot_info_get(); }
const port_info *cvn_np_tv_1slice_port_info_subslot(uint16_t subslot)
{
    return E::port_info_subslot(subslot);
}
const port_info *cvn_np_tv_1slice_port_info_from_subslot_ifsubinst(uint16_t subslot, uint16_t inst)
{
    return E::port_info_from_subslot_ifsubinst(subslot, inst);
}
uint32_t cvn_np_tv_1slice_front_port_to_np(uint32_t front)
{
    return E::front_port_field<E::out_np>(front);
}
uint32_t cvn_np_tv_1slice_front_port_to_np_port(uint32_t front)
{
    return E::front_port_field<E::out_np_port>(front);
}
uint32_t cvn_np_tv_1slice_front_port_to_port_type(uint32_t front)
{
    return E::front_port_field<E::out_port_type>(front);
}
uint32_t cvn_np_tv_1slice_front_port_to_face_plate_port(uint32_t front, uint32_t *fplate_port,
                                                        uint32_t *port_type)
{
    return E::front_port_to_face_plate_port(front, fplate_port, port_type);
}
uint32_t cvn_np_tv_1slice_front_port_mapping_info(uint32_t front, uint32_t *np, uint32_t *np_port,
                                                  uint32_t *fplate_port, uint32_t *port_type)
{
    return E::front_port_mapping_info(front, np, np_port, fplate_port, port_type);
}
uint32_t cvn_np_tv_1slice_info_num_local_ports(uint32_t np_id)
{
    return E::info_num_local_ports(np_id);
}
uint32_t cvn_np_tv_1slice_info_to_front_port(uint32_t np_id, uint32_t np_port, uint32_t *front)
{
    return E::info_to_front_port(np_id, np_port, front);
}
uint32_t cvn_np_tv_1slice_info_to_fplate_porttype(uint32_t np_id, uint32_t np_port,
                                                  uint32_t *fplate_port, uint32_t *port_type)
{
    return E::info_to_fplate_porttype(np_id, np_port, fplate_port, port_type);
}
uint32_t cvn_np_tv_1slice_first_front_port_on_np(uint32_t np_id, uint32_t *front)
{
    return E::first_front_port_on_np(np_id, front);
}
uint32_t cvn_np_tv_1slice_first_fplate_porttype_on_np(uint32_t np_id, uint32_t *port_type,
                                                      uint32_t *fplate_port)
{
    return E::first_fplate_porttype_on_np(np_id, port_type, fplate_port);
}
uint32_t cvn_tv_1slice_faceplate_porttype_to_np(uint32_t port_type, uint32_t fplate_port)
{
    return E::faceplate_field<E::out_np>(port_type, fplate_port);
}
uint32_t cvn_tv_1slice_faceplate_porttype_to_np_port(uint32_t port_type, uint32_t fplate_port)
{
    return E::faceplate_field<E::out_np_port>(port_type, fplate_port);
}
uint32_t cvn_tv_1slice_faceplate_porttype_to_phys_port(uint32_t port_type, uint32_t fplate_port)
{
    return E::faceplate_field<E::out_front>(port_type, fplate_port);
}
uint32_t cvn_tv_1slice_faceplate_porttype_mapping_info(uint32_t port_type, uint32_t fplate_port,
                                                       uint32_t *np, uint32_t *np_port,
                                                       uint32_t *front)
{
    return E::faceplate_porttype_mapping_info(port_type, fplate_port, np, np_port, front);
}
uint32_t cvn_np_tv_1slice_complex_to_subslot(uint8_t np_complex)
{
    return E::complex_to_subslot(np_complex);
}
uint32_t cvn_np_tv_1slice_complex_to_np(uint8_t np_complex, uint32_t second)
{
    return E::complex_to_np(np_complex, second);
}
uint32_t cvn_np_tv_1slice_set_if_subsys_type(uint32_t ifsubsys, uint16_t type)
{
    return cvn_np::common::set_if_subsys_type(ifsubsys, type);
}
uint32_t cvn_np_tv_1slice_to_cpu_port_map(uint16_t np_num)
{
    return cvn_np::common::to_cpu_port_map(np_num);
}
uint32_t cvn_np_tv_1slice_lib_set_subslot_phy_port(uint16_t subslot, uint32_t phy_port)
{
    return E::set_subslot_phy_port(subslot, phy_port);
}
uint32_t cvn_np_tv_1slice_lib_set_subslot_ifsubinst_ifsubinst_port(uint16_t subslot,
                                                                   uint32_t ifsubinst,
                                                                   uint32_t ifsubinst_port)
{
    return E::set_subslot_ifsubinst_ifsubinst_port(subslot, ifsubinst, ifsubinst_port);
}
uint32_t cvn_np_tv_1slice_lib_get_subslot(uint32_t front) { return E::get_subslot(front); }
uint32_t cvn_np_tv_1slice_lib_get_subslot_port(uint32_t front)
{
    return E::get_subslot_port(front);
}
uint32_t cvn_np_tv_1slice_lib_get_port(uint32_t front) { return E::get_port(front); }
uint32_t cvn_np_tv_1slice_lib_get_ifsubinst(uint32_t front) { return E::get_ifsubinst(front); }
uint32_t cvn_np_tv_1slice_lib_get_ifsubinst_port(uint32_t front)
{
    return E::get_ifsubinst_port(front);
}
uint32_t cvn_np_tv_1slice_lib_get_phys_port_tuple45(uint32_t port_type, uint16_t subslot,
                                                    uint16_t ifsubinst, uint16_t ifsubinst_port)
{
    return E::get_phys_port_tuple45(port_type, subslot, ifsubinst, ifsubinst_port);
}
const port_info *aux_cvn_np_tv_1slice_port_info_get(uint32_t subslot, uint32_t ifsubsys,
                                                    uint32_t ifsub_type)
{
    return E::port_info_of_type(subslot, ifsubsys, ifsub_type);
}
void aux_cvn_np_tv_1slice_front_port_to_mapping_info(uint32_t ifsubsys, uint32_t port,
                                                     uint32_t ifsub_type, uint32_t *np,
                                                     uint32_t *np_port, uint32_t *fplate_port,
                                                     uint32_t *port_type)
{
    E::front_port_to_mapping_info(ifsubsys, port, ifsub_type, np, np_port, fplate_port, port_type);
}
uint32_t aux_cvn_np_tv_1slice_info_num_local_ports(uint32_t subslot, uint32_t np_num,
                                                   uint32_t ifsub_type)
{
    return E::aux_num_local_ports(subslot, np_num, ifsub_type);
}
void aux_cvn_np_tv_1slice_info_to_mapping_info(uint32_t np_num, uint32_t np_port,
                                               uint32_t ifsub_type, uint32_t *front,
                                               uint32_t *fplate_port, uint32_t *port_type)
{
    E::info_to_mapping_info(np_num, np_port, ifsub_type, front, fplate_port, port_type);
}
uint32_t aux_cvn_tv_1slice_faceplate_to_mapping_info(uint32_t ifsubsys, uint32_t port,
                                                     uint32_t port_type, uint32_t *np,
                                                     uint32_t *np_port, uint32_t *front)
{
    return E::faceplate_to_mapping_info(ifsubsys, port, port_type, np, np_port, front);
}
void aux_tv_1slice_np_port_to_mapping_info(const port_mapping_entry *const *entries,
                                           uint32_t np_port, uint32_t count, uint32_t *front,
                                           uint32_t *fplate_port, uint32_t *port_type)
{
    E::np_port_to_mapping_info(entries, np_port, count, front, fplate_port, port_type);
}

void cvn_np_1slice_tolvar_api_fill(cvn_np_api *table) { *table = E::own_ops(); }

void cvn_np_1slice_tolvar_init(void) { E::init(&cvn_np_api_1slice_tolvar); }

} // extern "C"
