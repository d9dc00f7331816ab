// cvn_np_lib.cpp - core of the port-mapping library: the global state, the
// card-type dispatch, lazy initialisation, the public functions of the 46
// slots and the assertion report.
//
// The core holds no mapping data and makes no mapping decision: a public
// function makes sure a family is selected and forwards its (narrowed)
// arguments to one slot of that family's operation table.

#include <cstdio>
#include <cstdlib>

#include "cvn_np_common_slots.h"
#include "cvn_np_lib.h"
#include "cvn_np_lib_tables.h"
#include "cvn_np_platform.h"
#include "cvn_np_report.h"

extern "C" {
cvn_np_api *card_np_api = nullptr;
int32_t initialized = 0;
uint32_t cardtype = 0;
}

namespace cvn_np {

void report_assertion(const char *path, int line, const char *text) noexcept
{
    // The lock is never released: the process ends here, and no other
    // thread's output may split the line.
    flockfile(stderr);
    (void)std::fprintf(stderr, "%s: %d %s -- assertion failed\n", path, line, text);
    std::abort();
}

void cvn_np_lib_init_my_card()
{
    cardtype = platform_get_my_card_type();
    cvn_np_lib_init(cardtype);
}

} // namespace cvn_np

namespace {

constexpr const char k_path[] = "platforms/corvan/lc/lc_tessel/lib/src/cvn_np_lib.cpp";

// A run of card types served by one family.
struct card_family {
    uint32_t first;
    uint32_t last;
    cvn_np_api *api;
    void (*init)();
    const char *name; // what cvn_np_card_family answers
};

// The card types the library serves, in card-type order; any other type
// is rejected.
constexpr card_family k_card_families[] = {
    {0x3D0267, 0x3D026C, &cvn_np_api_fenna, cvn_np_fenna_init, "fenna"},
    {0x3D026D, 0x3D0276, &cvn_np_api_brisca, cvn_np_brisca_init, "brisca"},
    {0x3D0278, 0x3D0281, &cvn_np_api_brisca_4p, cvn_np_brisca_4p_init, "brisca_4p"},
    {0x3D028C, 0x3D028F, &cvn_np_api_1slice_tolvar, cvn_np_1slice_tolvar_init, "tolvar_1slice"},
    {0x3D0291, 0x3D0295, &cvn_np_api_1slice_tolvar, cvn_np_1slice_tolvar_init, "tolvar_1slice"},
    {0x3D0296, 0x3D0299, &cvn_np_api_2slice_tolvar, cvn_np_2slice_tolvar_init, "tolvar_2slice"},
    {0x3D029B, 0x3D029F, &cvn_np_api_2slice_tolvar, cvn_np_2slice_tolvar_init, "tolvar_2slice"},
    {0x3D02AA, 0x3D02B3, &cvn_np_api_brisca, cvn_np_brisca_init, "brisca"},
    {0x3D02B4, 0x3D02BD, &cvn_np_api_brisca_4p, cvn_np_brisca_4p_init, "brisca_4p"},
    {0x3D02C1, 0x3D02C1, &cvn_np_api_maruta, cvn_np_maruta_init, "maruta"},
    {0x3D02C2, 0x3D02C3, &cvn_np_api_dornik, cvn_np_dornik_init, "dornik"},
    {0x3D02C4, 0x3D02C5, &cvn_np_api_brisca, cvn_np_brisca_init, "brisca"},
    {0x3D02C6, 0x3D02C6, &cvn_np_api_dornik, cvn_np_dornik_init, "dornik"},
    {0x3D02C7, 0x3D02D2, &cvn_np_api_quellon, cvn_np_quellon_init, "quellon"},
    {0x3D02D8, 0x3D02D8, &cvn_np_api_2slice_tolvar, cvn_np_2slice_tolvar_init, "tolvar_2slice"},
    {0x3D02D9, 0x3D02D9, &cvn_np_api_1slice_tolvar, cvn_np_1slice_tolvar_init, "tolvar_1slice"},
    {0x3D02DA, 0x3D02DA, &cvn_np_api_maruta, cvn_np_maruta_init, "maruta"},
};

const card_family *family_of(uint32_t card_type)
{
    for (const card_family &f : k_card_families)
        if (card_type >= f.first && card_type <= f.last)
            return &f;
    return nullptr;
}

using cvn_np::common::forward;

} // namespace

extern "C" {

uint32_t cvn_np_lib_init(uint32_t card_type)
{
    const card_family *f = family_of(card_type);
    if (f == nullptr)
        cvn_np::report_assertion(k_path, __LINE__, "0");
    card_np_api = f->api;
    f->init();
    initialized = 1;
    return 0;
}

const char *cvn_np_card_family(uint32_t card_type)
{
    const card_family *f = family_of(card_type);
    return f == nullptr ? nullptr : f->name;
}

uint32_t cvn_np_id_validate(uint32_t np_id, uint8_t *np)
{
    if (np == nullptr)
        return CVN_NP_ERR_INVALID;
    *np = static_cast<uint8_t>(np_id);
    return *np < cvn_np_how_many() ? 0 : CVN_NP_ERR_INVALID;
}

uint32_t cvn_np_unsupported(void) { return CVN_NP_ERR_INVALID; }

// ---- The public functions of the slots, in slot order -------------------

using api = cvn_np_api;

const card_version *cvn_np_version_get(void) { return forward<&api::cvn_np_version_get>(); }
uint32_t cvn_max_mtu(void) { return forward<&api::cvn_max_mtu>(); }
uint32_t cvn_np_how_many(void) { return forward<&api::cvn_np_how_many>(); }
uint32_t cvn_np_chip_how_many(void) { return forward<&api::cvn_np_chip_how_many>(); }
const port_info *cvn_np_port_info_get(void) { return forward<&api::cvn_np_port_info_get>(); }
const subslot_info *cvn_np_subslot_info_get(void)
{
    return forward<&api::cvn_np_subslot_info_get>();
}
const port_info *cvn_np_port_info_subslot(uint16_t subslot)
{
    return forward<&api::cvn_np_port_info_subslot>(subslot);
}
const port_info *cvn_np_port_info_from_subslot_ifsubinst(uint16_t subslot, uint16_t ifsubinst)
{
    return forward<&api::cvn_np_port_info_from_subslot_ifsubinst>(subslot, ifsubinst);
}
uint32_t cvn_np_front_port_to_np(uint32_t front)
{
    return forward<&api::cvn_np_front_port_to_np>(front);
}
uint32_t cvn_np_front_port_to_np_port(uint32_t front)
{
    return forward<&api::cvn_np_front_port_to_np_port>(front);
}
uint32_t cvn_np_front_port_to_port_type(uint32_t front)
{
    return forward<&api::cvn_np_front_port_to_port_type>(front);
}
uint32_t cvn_np_front_port_to_face_plate_port(uint32_t front, uint32_t *fplate_port,
                                              uint32_t *port_type)
{
    return forward<&api::cvn_np_front_port_to_face_plate_port>(front, fplate_port, port_type);
}
uint32_t cvn_np_front_port_mapping_info(uint32_t front, uint32_t *np, uint32_t *np_port,
                                        uint32_t *fplate_port, uint32_t *port_type)
{
    return forward<&api::cvn_np_front_port_mapping_info>(front, np, np_port, fplate_port,
                                                         port_type);
}
uint32_t cvn_np_info_num_local_ports(uint32_t np_id)
{
    return forward<&api::cvn_np_info_num_local_ports>(np_id);
}
uint32_t cvn_np_info_to_front_port(uint32_t np_id, uint32_t np_port, uint32_t *front)
{
    return forward<&api::cvn_np_info_to_front_port>(np_id, np_port, front);
}
uint32_t cvn_np_info_to_fplate_porttype(uint32_t np_id, uint32_t np_port, uint32_t *fplate_port,
                                        uint32_t *port_type)
{
    return forward<&api::cvn_np_info_to_fplate_porttype>(np_id, np_port, fplate_port, port_type);
}
uint32_t cvn_np_first_front_port_on_np(uint32_t np_id, uint32_t *front)
{
    return forward<&api::cvn_np_first_front_port_on_np>(np_id, front);
}
uint32_t cvn_np_first_phys_port_on_np(uint32_t np_id, uint32_t *port)
{
    return forward<&api::cvn_np_first_phys_port_on_np>(np_id, port);
}
uint32_t cvn_np_first_fplate_porttype_on_np(uint32_t np_id, uint32_t *port_type,
                                            uint32_t *fplate_port)
{
    return forward<&api::cvn_np_first_fplate_porttype_on_np>(np_id, port_type, fplate_port);
}
uint32_t cvn_faceplate_porttype_to_np(uint32_t port_type, uint32_t fplate_port)
{
    return forward<&api::cvn_faceplate_porttype_to_np>(port_type, fplate_port);
}
uint32_t cvn_faceplate_porttype_to_np_port(uint32_t port_type, uint32_t fplate_port)
{
    return forward<&api::cvn_faceplate_porttype_to_np_port>(port_type, fplate_port);
}
uint32_t cvn_faceplate_porttype_to_phys_port(uint32_t port_type, uint32_t fplate_port)
{
    return forward<&api::cvn_faceplate_porttype_to_phys_port>(port_type, fplate_port);
}
uint32_t cvn_faceplate_porttype_mapping_info(uint32_t port_type, uint32_t fplate_port, uint32_t *np,
                                             uint32_t *np_port, uint32_t *front)
{
    return forward<&api::cvn_faceplate_porttype_mapping_info>(port_type, fplate_port, np, np_port,
                                                              front);
}
uint32_t cvn_np_complex_to_subslot(uint8_t np_complex)
{
    return forward<&api::cvn_np_complex_to_subslot>(np_complex);
}
uint32_t cvn_np_complex_to_subslot_list(uint8_t np_complex, uint32_t *count,
                                        uint32_t *first_subslot)
{
    return forward<&api::cvn_np_complex_to_subslot_list>(np_complex, count, first_subslot);
}
uint32_t cvn_np_complex_to_np(uint8_t np_complex, uint32_t second)
{
    return forward<&api::cvn_np_complex_to_np>(np_complex, second);
}
uint32_t cvn_np_set_if_subsys_type(uint32_t ifsubsys, uint16_t type)
{
    return forward<&api::cvn_np_set_if_subsys_type>(ifsubsys, type);
}
uint32_t cvn_np_subslot_to_np_list(uint8_t subslot, uint32_t *count, uint32_t *first_np)
{
    return forward<&api::cvn_np_subslot_to_np_list>(subslot, count, first_np);
}
uint32_t cvn_np_to_cpu_port_map(uint16_t np_num)
{
    return forward<&api::cvn_np_to_cpu_port_map>(np_num);
}
uint32_t cvn_np_lib_set_subslot_phy_port(uint16_t subslot, uint32_t phy_port)
{
    return forward<&api::cvn_np_lib_set_subslot_phy_port>(subslot, phy_port);
}
uint32_t cvn_np_lib_set_subslot_ifsubinst_ifsubinst_port(uint16_t subslot, uint32_t ifsubinst,
                                                         uint32_t ifsubinst_port)
{
    return forward<&api::cvn_np_lib_set_subslot_ifsubinst_ifsubinst_port>(subslot, ifsubinst,
                                                                          ifsubinst_port);
}
uint32_t cvn_np_lib_get_subslot(uint32_t front)
{
    return forward<&api::cvn_np_lib_get_subslot>(front);
}
uint32_t cvn_np_lib_get_subslot_port(uint32_t front)
{
    return forward<&api::cvn_np_lib_get_subslot_port>(front);
}
uint32_t cvn_np_lib_get_port(uint32_t front) { return forward<&api::cvn_np_lib_get_port>(front); }
uint32_t cvn_np_lib_get_ifsubinst(uint32_t front)
{
    return forward<&api::cvn_np_lib_get_ifsubinst>(front);
}
uint32_t cvn_np_lib_get_ifsubinst_port(uint32_t front)
{
    return forward<&api::cvn_np_lib_get_ifsubinst_port>(front);
}
uint32_t cvn_np_lib_get_phys_port_tuple45(uint32_t port_type, uint16_t subslot, uint16_t ifsubinst,
                                          uint16_t ifsubinst_port)
{
    return forward<&api::cvn_np_lib_get_phys_port_tuple45>(port_type, subslot, ifsubinst,
                                                           ifsubinst_port);
}
uint32_t aux_cvn_np_front_port_to_ifsubsys(uint32_t front, uint32_t *subslot, uint32_t *ifsubsys,
                                           uint32_t *ifsub_type)
{
    return forward<&api::aux_cvn_np_front_port_to_ifsubsys>(front, subslot, ifsubsys, ifsub_type);
}
const port_info *aux_cvn_np_port_info_get(uint32_t subslot, uint32_t ifsubsys, uint32_t ifsub_type)
{
    return forward<&api::aux_cvn_np_port_info_get>(subslot, ifsubsys, ifsub_type);
}
void aux_cvn_np_front_port_to_mapping_info(uint32_t ifsubsys, uint32_t port, uint32_t ifsub_type,
                                           uint32_t *np, uint32_t *np_port, uint32_t *fplate_port,
                                           uint32_t *port_type)
{
    forward<&api::aux_cvn_np_front_port_to_mapping_info>(ifsubsys, port, ifsub_type, np, np_port,
                                                         fplate_port, port_type);
}
uint32_t aux_cvn_np_info_num_local_ports(uint32_t subslot, uint32_t np_num, uint32_t ifsub_type)
{
    return forward<&api::aux_cvn_np_info_num_local_ports>(subslot, np_num, ifsub_type);
}
void aux_cvn_np_info_to_mapping_info(uint32_t np_num, uint32_t np_port, uint32_t ifsub_type,
                                     uint32_t *front, uint32_t *fplate_port, uint32_t *port_type)
{
    forward<&api::aux_cvn_np_info_to_mapping_info>(np_num, np_port, ifsub_type, front, fplate_port,
                                                   port_type);
}
uint32_t aux_cvn_np_first_port_on_np(uint32_t np_num, uint32_t ifsubsys, uint32_t ifsub_type,
                                     uint32_t *front, uint32_t *fplate_port, uint32_t *port_type)
{
    return forward<&api::aux_cvn_np_first_port_on_np>(np_num, ifsubsys, ifsub_type, front,
                                                      fplate_port, port_type);
}
uint32_t aux_cvn_faceplate_to_mapping_info(uint32_t ifsubsys, uint32_t port, uint32_t port_type,
                                           uint32_t *np, uint32_t *np_port, uint32_t *front)
{
    return forward<&api::aux_cvn_faceplate_to_mapping_info>(ifsubsys, port, port_type, np, np_port,
                                                            front);
}
void aux_np_port_to_mapping_info(const port_mapping_entry *const *entries, uint32_t np_port,
                                 uint32_t count, uint32_t *front, uint32_t *fplate_port,
                                 uint32_t *port_type)
{
    forward<&api::aux_np_port_to_mapping_info>(entries, np_port, count, front, fplate_port,
                                               port_type);
}
uint32_t aux_cvn_np_front_port_to_ifsubinst(uint32_t front, uint32_t *ifsubinst)
{
    return forward<&api::aux_cvn_np_front_port_to_ifsubinst>(front, ifsubinst);
}

} // extern "C"
