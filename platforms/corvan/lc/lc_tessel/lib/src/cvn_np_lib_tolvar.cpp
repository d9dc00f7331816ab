// cvn_np_lib_tolvar.cpp - the tolvar 2-slice cards: two subslots, each
// served by its own NP (NP n serves subslot n) and holding one EP that the
// platform reports.  One EP data table serves both subslots; an entry's NP
// is counted up by the subslot, and a split instance's entries start at
// instance * np_port_span / 2 of its row.

#include "cvn_np_tolvar_engine.h"

namespace tv = cvn_np::tolvar;

constexpr uint32_t k_spare = 2;

extern "C" {

// (ep_type, spare, np_port_base, np_port_span) over the EP's ports.
constexpr cvn_np_ep_data cvn_np_lib_2slice_tv_info_types[13] = {
    tv::ep_row<tv::k_2x10g>(CVN_NP_IFSUB_TYPE_TV_2X10GE, k_spare, 192, 201),
    tv::ep_row<tv::k_4x10g>(CVN_NP_IFSUB_TYPE_TV_4X10GE, k_spare, 192, 201),
    tv::ep_row<tv::k_8x10g>(CVN_NP_IFSUB_TYPE_TV_8X10GE, k_spare, 192, 201),
    tv::ep_row<tv::k_16x10g>(CVN_NP_IFSUB_TYPE_TV_16X10GE, k_spare, 192, 201),
    tv::ep_row<tv::k_20x10g>(CVN_NP_IFSUB_TYPE_TV_20X10GE, k_spare, 192, 201),
    tv::ep_row<tv::k_20x10g>(CVN_NP_IFSUB_TYPE_TV_20X10GE_B, k_spare, 192, 201),
    tv::ep_row<tv::k_2x40g>(CVN_NP_IFSUB_TYPE_TV_2X40GE, k_spare, 96, 97),
    tv::ep_row<tv::k_1x40g>(CVN_NP_IFSUB_TYPE_TV_1X40GE, k_spare, 96, 97),
    tv::ep_row<tv::k_20x_none>(CVN_NP_IFSUB_TYPE_TV_20X_NONE, k_spare, 192, 201),
    tv::ep_row<tv::k_100g_pair>(CVN_NP_IFSUB_TYPE_100GE, k_spare, 116, 2),
    tv::ep_row<tv::k_10g_pair>(CVN_NP_IFSUB_TYPE_10GE, k_spare, 192, 20),
    tv::ep_row<tv::k_40g_pair>(CVN_NP_IFSUB_TYPE_40GE, k_spare, 96, 4),
    tv::ep_row<tv::k_40g_pair>(CVN_NP_IFSUB_TYPE_40GE_ALT, k_spare, 96, 4),
};

constexpr np_info np_info_2slice_tolvar = tv::card_np_info(2, cvn_np_lib_2slice_tv_info_types);

constexpr port_info tolvar_dummy_port_info[1] = {{0, CVN_NP_PORT_TYPE_END}};

const np_info *tolvar_card_np_info;
const cvn_np_ep_data *cvn_np_lib_info_types;
card_version tolvar_card_version;
subslot_info tolvar_card_subslot_info;
cvn_np_api cvn_np_api_2slice_tolvar;

} // extern "C"

// NP n serves subslot n.
static_assert(np_info_2slice_tolvar.num_complex == np_info_2slice_tolvar.num_subslot);
// Telling entries: 573's second half, instance 1 of the 10GE and 40GE pairs.
static_assert(cvn_np_lib_2slice_tv_info_types[3].entries[8]->np_port == 204);
static_assert(cvn_np_lib_2slice_tv_info_types[10].entries[12]->phys_front_port == 18);
static_assert(cvn_np_lib_2slice_tv_info_types[10].entries[12]->np_port == 206);
static_assert(cvn_np_lib_2slice_tv_info_types[11].entries[3]->fplate_port == 17);
static_assert(cvn_np_lib_2slice_tv_info_types[11].entries[3]->np_port == 100);
static_assert(cvn_np_lib_2slice_tv_info_types[8].entries[19]->np_port == 37);

namespace {

constexpr tv::type_index k_rows_by_type = tv::rows_by_type(cvn_np_lib_2slice_tv_info_types);

// The row of a type; the subslot is not used: one table serves both subslots.
constexpr const cvn_np_ep_data *tolvar_ep_data_find(uint32_t, uint32_t type)
{
    return tv::row_for(k_rows_by_type, type);
}

// The instance of a split subslot by the instance rows' NP-local ports.
constexpr tv::np_port_table instance_of_np_port{[](uint32_t np_port) {
    return tv::instance_of_np_port(cvn_np_lib_2slice_tv_info_types, np_port);
}};
static_assert(instance_of_np_port(201) == 0 && instance_of_np_port(202) < 0 &&
              instance_of_np_port(204) == 1 && instance_of_np_port(100) == 1);

// NP n's port lives in subslot n; on a subslot split in two, in the
// instance its NP-port range names.
tv::place_answer tolvar_np_port_to_ifsub_type(uint32_t np_id, uint32_t np_port)
{
    const tv::place_answer whole = tv::ask(np_id, CVN_NP_IFSUB_ANY);
    if (whole.status != 0)
        return tv::k_not_found;
    if (!tv::has_second_instance(whole.type))
        return tv::place_at(np_id, 0);
    const int i = instance_of_np_port(np_port);
    return i < 0 ? tv::k_not_found : tv::place_at(np_id, static_cast<uint32_t>(i));
}

uint64_t instance_entry(uint32_t port, uint32_t, const cvn_np_ep_data &row, bool faceplate);

constexpr tv::family k_tolvar = {
    .path = "platforms/corvan/lc/lc_tessel/lib/src/cvn_np_lib_tolvar.cpp",
    .text =
        {
            .subslot = CVN_NP_CHECK("subslot < tolvar_card_np_info->num_subslot"),
            .subslot_num = CVN_NP_CHECK("subslot_num < tolvar_card_np_info->num_subslot"),
            .np_num = CVN_NP_CHECK("np_num < tolvar_card_np_info->num_complex"),
            .np_id = CVN_NP_CHECK("np_id < cvn_np_how_many()"),
            .np_complex = CVN_NP_CHECK("np_complex < cvn_np_how_many()"),
            .front_needed = CVN_NP_CHECK("phys_front_port != NULL"),
            .port_type_needed = CVN_NP_CHECK("port_type != NULL"),
            .fplate_needed = CVN_NP_CHECK("fplate_port != NULL"),
            .bay = CVN_NP_CHECK("subslot < CVN_NP_TOTAL_SUBSLOT_TOLVAR"),
            .row_port_type = CVN_NP_CHECK("port_type == ep_data->port_type"),
            .unknown = CVN_NP_CHECK("0"),
            .first_port_bay = {}, // slot 17 is rejected on this card
        },
    .np_info_table = &np_info_2slice_tolvar,
    .card_np_info = &tolvar_card_np_info,
    .info_types_table = cvn_np_lib_2slice_tv_info_types,
    .card_info_types = &cvn_np_lib_info_types,
    .card_version_record = &tolvar_card_version,
    .card_subslot_info = &tolvar_card_subslot_info,
    .dummy_port_info = tolvar_dummy_port_info,
    .row_of = tolvar_ep_data_find,
    .rows_by_current_record = true,
    .place_np_port = tolvar_np_port_to_ifsub_type,
    .instance_entry = instance_entry,
    .one_np_for_both_bays = false,
    .alt_40ge_mapped = true, // 0x10003 has a row of its own here
    .first_front_port_hides_query_status = false,
};

} // namespace

using E = tv::engine<k_tolvar>;

namespace {

// A split instance's entries start at instance * np_port_span / 2.  A front
// port gives its instance port as slot 35 decodes it, a faceplate port its
// low four bits.
uint64_t instance_entry(uint32_t port, uint32_t, const cvn_np_ep_data &row, bool faceplate)
{
    const uint64_t instance = E::step<&cvn_np_api::cvn_np_lib_get_ifsubinst>(port);
    const uint64_t instance_port =
        faceplate ? port & 0x0F : E::step<&cvn_np_api::cvn_np_lib_get_ifsubinst_port>(port);
    return instance * row.np_port_span / 2 + instance_port;
}

} // namespace

extern "C" {

// The family functions.
const card_version *cvn_np_tolvar_version_get(void) { return E::version_get(); }
uint32_t cvn_tolvar_max_mtu(void) { return E::max_mtu(); }
uint32_t cvn_np_tolvar_how_many(void) { return E::how_many(); }
uint32_t cvn_np_tolvar_chip_how_many(void) { return E::chip_how_many(); }
const port_info *cvn_np_tolvar_port_info_get(void) { return E::port_info_get(); }
const subslot_info *cvn_np_tolvar_subslot_info_get(void) { return E::subslot_info_get(); }
const port_info *cvn_np_tolvar_port_info_subslot(uint16_t subslot)
{
    return E::port_info_subslot(subslot);
}
const port_info *cvn_np_tolvar_port_info_from_subslot_ifsubinst(uint16_t subslot, uint16_t inst)
{
    return E::port_info_from_subslot_ifsubinst(subslot, inst);
}
uint32_t cvn_np_tolvar_front_port_to_np(uint32_t front)
{
    return E::front_port_field<E::out_np>(front);
}
uint32_t cvn_np_tolvar_front_port_to_np_port(uint32_t front)
{
    return E::front_port_field<E::out_np_port>(front);
}
uint32_t cvn_np_tolvar_front_port_to_port_type(uint32_t front)
{
    return E::front_port_field<E::out_port_type>(front);
}
uint32_t cvn_np_tolvar_front_port_to_face_plate_port(uint32_t front, uint32_t *fplate_port,
                                                     uint32_t *port_type)
{
    return E::front_port_to_face_plate_port(front, fplate_port, port_type);
}
uint32_t cvn_np_tolvar_front_port_mapping_info(uint32_t front, uint32_t *np, uint32_t *np_port,
                                               uint32_t *fplate_port, uint32_t *port_type)
{
    return E::front_port_mapping_info(front, np, np_port, fplate_port, port_type);
}
uint32_t cvn_np_tolvar_info_num_local_ports(uint32_t np_id)
{
    return E::info_num_local_ports(np_id);
}
uint32_t cvn_np_tolvar_info_to_front_port(uint32_t np_id, uint32_t np_port, uint32_t *front)
{
    return E::info_to_front_port(np_id, np_port, front);
}
uint32_t cvn_np_tolvar_info_to_fplate_porttype(uint32_t np_id, uint32_t np_port,
                                               uint32_t *fplate_port, uint32_t *port_type)
{
    return E::info_to_fplate_porttype(np_id, np_port, fplate_port, port_type);
}
uint32_t cvn_np_tolvar_first_front_port_on_np(uint32_t np_id, uint32_t *front)
{
    return E::first_front_port_on_np(np_id, front);
}
uint32_t cvn_np_tolvar_first_fplate_porttype_on_np(uint32_t np_id, uint32_t *port_type,
                                                   uint32_t *fplate_port)
{
    return E::first_fplate_porttype_on_np(np_id, port_type, fplate_port);
}
uint32_t cvn_tolvar_faceplate_porttype_to_np(uint32_t port_type, uint32_t fplate_port)
{
    return E::faceplate_field<E::out_np>(port_type, fplate_port);
}
uint32_t cvn_tolvar_faceplate_porttype_to_np_port(uint32_t port_type, uint32_t fplate_port)
{
    return E::faceplate_field<E::out_np_port>(port_type, fplate_port);
}
uint32_t cvn_tolvar_faceplate_porttype_to_phys_port(uint32_t port_type, uint32_t fplate_port)
{
    return E::faceplate_field<E::out_front>(port_type, fplate_port);
}
uint32_t cvn_tolvar_faceplate_porttype_mapping_info(uint32_t port_type, uint32_t fplate_port,
                                                    uint32_t *np, uint32_t *np_port,
                                                    uint32_t *front)
{
    return E::faceplate_porttype_mapping_info(port_type, fplate_port, np, np_port, front);
}
uint32_t cvn_np_tolvar_complex_to_subslot(uint8_t np_complex)
{
    return E::complex_to_subslot(np_complex);
}
uint32_t cvn_np_tolvar_complex_to_np(uint8_t np_complex, uint32_t second)
{
    return E::complex_to_np(np_complex, second);
}
uint32_t cvn_np_tolvar_set_if_subsys_type(uint32_t ifsubsys, uint16_t type)
{
    return cvn_np::common::set_if_subsys_type(ifsubsys, type);
}
uint32_t cvn_np_tolvar_to_cpu_port_map(uint16_t np_num)
{
    return cvn_np::common::to_cpu_port_map(np_num);
}
uint32_t cvn_np_tolvar_lib_set_subslot_phy_port(uint16_t subslot, uint32_t phy_port)
{
    return E::set_subslot_phy_port(subslot, phy_port);
}
uint32_t cvn_np_tolvar_lib_set_subslot_ifsubinst_ifsubinst_port(uint16_t subslot,
                                                                uint32_t ifsubinst,
                                                                uint32_t ifsubinst_port)
{
    return E::set_subslot_ifsubinst_ifsubinst_port(subslot, ifsubinst, ifsubinst_port);
}
uint32_t cvn_np_tolvar_lib_get_subslot(uint32_t front) { return E::get_subslot(front); }
uint32_t cvn_np_tolvar_lib_get_subslot_port(uint32_t front) { return E::get_subslot_port(front); }
uint32_t cvn_np_tolvar_lib_get_port(uint32_t front) { return E::get_port(front); }
uint32_t cvn_np_tolvar_lib_get_ifsubinst(uint32_t front) { return E::get_ifsubinst(front); }
uint32_t cvn_np_tolvar_lib_get_ifsubinst_port(uint32_t front)
{
    return E::get_ifsubinst_port(front);
}
uint32_t cvn_np_tolvar_lib_get_phys_port_tuple45(uint32_t port_type, uint16_t subslot,
                                                 uint16_t ifsubinst, uint16_t ifsubinst_port)
{
    return E::get_phys_port_tuple45(port_type, subslot, ifsubinst, ifsubinst_port);
}
const port_info *aux_cvn_np_tolvar_port_info_get(uint32_t subslot, uint32_t ifsubsys,
                                                 uint32_t ifsub_type)
{
    return E::port_info_of_type(subslot, ifsubsys, ifsub_type);
}
void aux_cvn_np_tolvar_front_port_to_mapping_info(uint32_t ifsubsys, uint32_t port,
                                                  uint32_t ifsub_type, uint32_t *np,
                                                  uint32_t *np_port, uint32_t *fplate_port,
                                                  uint32_t *port_type)
{
    E::front_port_to_mapping_info(ifsubsys, port, ifsub_type, np, np_port, fplate_port, port_type);
}
uint32_t aux_cvn_np_tolvar_info_num_local_ports(uint32_t subslot, uint32_t np_num,
                                                uint32_t ifsub_type)
{
    return E::aux_num_local_ports(subslot, np_num, ifsub_type);
}
void aux_cvn_np_tolvar_info_to_mapping_info(uint32_t np_num, uint32_t np_port, uint32_t ifsub_type,
                                            uint32_t *front, uint32_t *fplate_port,
                                            uint32_t *port_type)
{
    E::info_to_mapping_info(np_num, np_port, ifsub_type, front, fplate_port, port_type);
}
uint32_t aux_cvn_tolvar_faceplate_to_mapping_info(uint32_t ifsubsys, uint32_t port,
                                                  uint32_t port_type, uint32_t *np,
                                                  uint32_t *np_port, uint32_t *front)
{
    return E::faceplate_to_mapping_info(ifsubsys, port, port_type, np, np_port, front);
}
void aux_tolvar_np_port_to_mapping_info(const port_mapping_entry *const *entries, uint32_t np_port,
                                        uint32_t count, uint32_t *front, uint32_t *fplate_port,
                                        uint32_t *port_type)
{
    E::np_port_to_mapping_info(entries, np_port, count, front, fplate_port, port_type);
}

void cvn_np_2slice_tolvar_api_fill(cvn_np_api *table) { *table = E::own_ops(); }

void cvn_np_2slice_tolvar_init(void) { E::init(&cvn_np_api_2slice_tolvar); }

} // extern "C"
