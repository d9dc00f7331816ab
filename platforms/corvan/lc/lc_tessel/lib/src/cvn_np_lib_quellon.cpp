// cvn_np_lib_quellon.cpp - the quellon cards: 24 ports per NP, one or two
// NPs (by card type), one NP per complex, one subslot.  The ports sit in
// groups of four on interface-subsystem instances, six instances per NP.
// A front port is simply the index of the port's entry in the port table,
// and the faceplate port has the same value; a port's type is asked of its
// instance every time.
//
// The NP count is read from the global cardtype on every call: cardtype
// must hold the card type the library was initialised for.

#include <algorithm>
#include <cstddef>
#include <functional>

#include "cvn_np_common_slots.h"
#include "cvn_np_lib_tables.h"
#include "cvn_np_report.h"
#include "cvn_np_table_rows.h"

namespace {

namespace common = cvn_np::common;

constexpr const char k_path[] = "platforms/corvan/lc/lc_tessel/lib/src/cvn_np_lib_quellon.cpp";

constexpr uint32_t k_ports_per_np = 24;
constexpr uint32_t k_ports_per_instance = 4;
constexpr uint32_t k_instances_per_np = k_ports_per_np / k_ports_per_instance;
constexpr uint32_t k_table_ports = 48;
constexpr uint32_t k_first_np_port = 192;

// The NP and complex checks, shared by several slots.
constexpr cvn_np::check k_np_id_check = CVN_NP_CHECK("np_id < cvn_np_how_many()");
constexpr cvn_np::check k_np_complex_check = CVN_NP_CHECK("np_complex < cvn_np_how_many()");
using complexes = common::one_np_per_complex<k_path, k_np_complex_check>;

// The bound of a port argument, by the argument's role.
constexpr cvn_np::check k_front_bound = CVN_NP_CHECK("phys_front_port < cvn_np_qln_max_ports");
constexpr cvn_np::check k_fplate_bound = CVN_NP_CHECK("fplate_port < cvn_np_qln_max_ports");
constexpr cvn_np::check k_sub_bound = CVN_NP_CHECK("sub_phys_front_port < cvn_np_qln_max_ports");

// Port i: instance i / 4, port i % 4 within it, NP i / 24.  Each NP's ports
// 192 to 215 come in swapped pairs: port 0 of an instance is the odd NP
// port of its pair.
constexpr quellon_port_mapping_entry port_entry(std::size_t i)
{
    const auto port = static_cast<uint16_t>(i);
    const auto instance = static_cast<uint16_t>(i / k_ports_per_instance);
    const auto instance_port = static_cast<uint16_t>(i % k_ports_per_instance);
    const auto np_port = static_cast<uint16_t>(
        k_first_np_port + k_ports_per_instance * (instance % k_instances_per_np) +
        (instance_port ^ 1u));
    return {port,   port, instance, instance_port, static_cast<uint16_t>(i / k_ports_per_np),
            np_port};
}

// One-NP card types; every other quellon card type has two NPs.
constexpr uint32_t k_one_np_types[] = {0x3D02CA, 0x3D02CB, 0x3D02CC, 0x3D02D0, 0x3D02D1, 0x3D02D2};
// The same as bits, bit k for card type k_first_type + k.
constexpr uint32_t k_first_type = 0x3D02C7;
constexpr uint32_t k_one_np_bits = [] {
    uint32_t bits = 0;
    for (uint32_t type : k_one_np_types)
        bits |= 1u << (type - k_first_type);
    return bits;
}();

} // namespace

extern "C" {

constexpr quellon_port_mapping_entry cvn_np_port_mapping_quellon[48] = {
    CVN_NP_ROWS(port_entry, 4, 8)};

uint16_t cvn_np_qln_max_ports = 0;

port_info quellon_port_info_list[3] = {
    {0, CVN_NP_PORT_TYPE_COMBO}, {0, CVN_NP_PORT_TYPE_COMBO}, {0, CVN_NP_PORT_TYPE_END}};
card_version quellon_card_version = {5, 'c'};
subslot_info cvn_np_subslot_info_quellon = {1, 0, 0, 0};

cvn_np_api cvn_np_api_quellon;

} // extern "C"

namespace {

constexpr bool same_entry(const quellon_port_mapping_entry &a, const quellon_port_mapping_entry &b)
{
    return a.phys_front_port == b.phys_front_port && a.fplate_port == b.fplate_port &&
           a.ifsubinst == b.ifsubinst && a.ifsubinst_port == b.ifsubinst_port && a.np == b.np &&
           a.np_port == b.np_port;
}

// Every row as its rule gives it, and the telling rows:
// (phys_front_port, fplate_port, ifsubinst, ifsubinst_port, np, np_port).
static_assert(common::rows_follow(cvn_np_port_mapping_quellon, port_entry, same_entry));
static_assert(same_entry(cvn_np_port_mapping_quellon[0], {0, 0, 0, 0, 0, 193}));
static_assert(same_entry(cvn_np_port_mapping_quellon[3], {3, 3, 0, 3, 0, 194}));
static_assert(same_entry(cvn_np_port_mapping_quellon[24], {24, 24, 6, 0, 1, 193}));
static_assert(same_entry(cvn_np_port_mapping_quellon[30], {30, 30, 7, 2, 1, 199}));
static_assert(same_entry(cvn_np_port_mapping_quellon[47], {47, 47, 11, 3, 1, 214}));

// The ports in use: the init's bound, never more than the table holds.
uint32_t ports_in_use() { return std::min<uint32_t>(cvn_np_qln_max_ports, k_table_ports); }

// The port a front or faceplate argument names (its low 8 bits), checked
// against the ports in use with the caller's condition.
uint32_t checked_port(uint32_t argument, const cvn_np::check &in_use)
{
    const uint32_t i = argument & 0xFF;
    cvn_np::require(i < ports_in_use(), k_path, in_use);
    return i;
}

using common::through_table;
using api = cvn_np_api;

// ---- slots 0-7: card summary ----

const card_version *version_get() { return &quellon_card_version; }
uint32_t max_mtu() { return 9216; }

uint32_t how_many()
{
    const uint32_t k = cardtype - k_first_type;
    return k < 32 && (k_one_np_bits >> k & 1) != 0 ? 1 : 2;
}
// Slot 2 as the other slots ask it.
uint32_t np_count() { return through_table<&api::cvn_np_how_many, how_many>(); }

const port_info *port_info_get() { return &quellon_port_info_list[0]; }
const subslot_info *subslot_info_get() { return &cvn_np_subslot_info_quellon; }
const port_info *port_info_subslot(uint16_t) { return &quellon_port_info_list[0]; }

// One instance's four ports.
const port_info *port_info_from_subslot_ifsubinst(uint16_t, uint16_t)
{
    return &quellon_port_info_list[1];
}

// ---- slots 8-12: front port to NP ----

// One field of the entry of the port a front argument names (slots 8, 9
// and 33-35), the port checked with `bound`.
template <const cvn_np::check &bound, auto field> uint32_t port_field(uint32_t front)
{
    return cvn_np_port_mapping_quellon[checked_port(front, bound)].*field;
}
constexpr auto front_port_to_np = port_field<k_front_bound, &quellon_port_mapping_entry::np>;
constexpr auto front_port_to_np_port =
    port_field<k_front_bound, &quellon_port_mapping_entry::np_port>;
constexpr auto get_ifsubinst = port_field<k_sub_bound, &quellon_port_mapping_entry::ifsubinst>;
uint32_t get_subslot(uint32_t front);

// 10GE when the port's instance reports quellon's 10GE type; NONE for any
// other answer, a failed query included.
uint32_t front_port_to_port_type(uint32_t front)
{
    const uint32_t i = checked_port(front, k_front_bound);
    uint32_t type = CVN_NP_IFSUB_TYPE_NONE;
    const ifsubsys_id instance = common::place_of<get_subslot, get_ifsubinst>(i);
    const uint32_t status = common::ask_platform(instance, 0, nullptr, nullptr, &type);
    return status == 0 && type == CVN_NP_IFSUB_TYPE_QUELLON_10GE ? CVN_NP_PORT_TYPE_10GE
                                                                 : CVN_NP_PORT_TYPE_NONE;
}
// Slot 10 as the other slots ask it.
uint32_t port_type_of(uint32_t i)
{
    return through_table<&api::cvn_np_front_port_to_port_type, front_port_to_port_type>(i);
}

uint32_t front_port_mapping_info(uint32_t front, uint32_t *np, uint32_t *np_port,
                                 uint32_t *fplate_port, uint32_t *port_type)
{
    const uint32_t i = front & 0xFF;
    if (i >= ports_in_use())
        return CVN_NP_ERR_INVALID;
    if (np != nullptr)
        *np = through_table<&api::cvn_np_front_port_to_np, front_port_to_np>(i);
    if (np_port != nullptr)
        *np_port = through_table<&api::cvn_np_front_port_to_np_port, front_port_to_np_port>(i);
    common::put(fplate_port, cvn_np_port_mapping_quellon[i].fplate_port);
    if (port_type != nullptr)
        *port_type = port_type_of(i);
    return 0;
}

// ---- slots 13-18: NP to front port ----

// The port with NP-local port 192 + k of NP n: port 24n + (k ^ 1), the
// inverse of the table's rule, so the only port that matches.
constexpr uint32_t port_of(uint32_t np_id, uint32_t k) { return np_id * k_ports_per_np + (k ^ 1); }
static_assert(common::rows_follow(cvn_np_port_mapping_quellon, std::identity(),
                                  [](const quellon_port_mapping_entry &e, std::size_t i) {
                                      return port_of(e.np, e.np_port - k_first_np_port) == i;
                                  }));

// The port in use with that NP and NP-local port writes its index; nothing
// is written when there is none, nor through a NULL output.
uint32_t front_port_of_np(uint32_t nps, uint32_t np_id, uint32_t np_port, uint32_t *front)
{
    if (np_id >= nps)
        return CVN_NP_ERR_INVALID;
    const uint32_t k = np_port - k_first_np_port;
    if (np_id < k_table_ports / k_ports_per_np && k < k_ports_per_np &&
        port_of(np_id, k) < ports_in_use())
        common::put(front, port_of(np_id, k));
    return 0;
}
[[gnu::noinline]] uint32_t info_to_front_port_by_steps(uint32_t np_id, uint32_t np_port,
                                                       uint32_t *front)
{
    return front_port_of_np(np_count(), np_id, np_port, front);
}
uint32_t info_to_front_port(uint32_t np_id, uint32_t np_port, uint32_t *front)
{
    if (common::holds<&api::cvn_np_how_many, how_many>()) [[likely]]
        return front_port_of_np(how_many(), np_id, np_port, front);
    return info_to_front_port_by_steps(np_id, np_port, front);
}

// Slot 14 as the other slots ask it; they read its answer from a local
// preset to k_none, which stays when the NP has no such port.
uint32_t front_port_of(uint32_t np_id, uint32_t np_port, uint32_t *front)
{
    return through_table<&api::cvn_np_info_to_front_port, info_to_front_port>(np_id, np_port,
                                                                              front);
}
constexpr uint32_t k_none = UINT32_MAX;

uint32_t info_to_fplate_porttype(uint32_t np_id, uint32_t np_port, uint32_t *fplate_port,
                                 uint32_t *port_type)
{
    if (np_id >= np_count())
        return CVN_NP_ERR_INVALID;
    uint32_t front = k_none;
    const uint32_t status = front_port_of(np_id, np_port, &front);
    if (front != k_none) {
        common::put(fplate_port, front);
        if (port_type != nullptr)
            *port_type = port_type_of(front);
    }
    return status;
}

// The NP's port whose NP-local port is 192 (slots 16 and 17).
[[gnu::noinline]] uint32_t first_front_port_by_steps(uint32_t np_id, uint32_t *front)
{
    if (np_id >= np_count())
        return CVN_NP_ERR_INVALID;
    return front_port_of(np_id, k_first_np_port, front);
}
uint32_t first_front_port_on_np(uint32_t np_id, uint32_t *front)
{
    // Slot 14 counts the NPs again with slot 2; while both are quellon's
    // own that count is the one slot 16 makes first.
    if (common::holds<&api::cvn_np_how_many, how_many>() &&
        common::holds<&api::cvn_np_info_to_front_port, info_to_front_port>()) [[likely]]
        return front_port_of_np(how_many(), np_id, k_first_np_port, front);
    return first_front_port_by_steps(np_id, front);
}

// Slot 15 on the NP's port with NP-local port 192; the type is looked up
// when both outputs are given.
uint32_t first_fplate_porttype_on_np(uint32_t np_id, uint32_t *port_type, uint32_t *fplate_port)
{
    return info_to_fplate_porttype(np_id, k_first_np_port, fplate_port,
                                   fplate_port != nullptr ? port_type : nullptr);
}

// ---- slots 19-22: faceplate port to NP; the port type is not needed ----

// Slots 19 and 20: slot `slot` (8 or 9) on the port.
template <auto slot, auto own> uint32_t faceplate_field(uint32_t, uint32_t fplate)
{
    return through_table<slot, own>(checked_port(fplate, k_fplate_bound));
}

uint32_t faceplate_porttype_to_phys_port(uint32_t, uint32_t fplate)
{
    return checked_port(fplate, k_fplate_bound);
}

uint32_t faceplate_porttype_mapping_info(uint32_t, uint32_t fplate, uint32_t *np, uint32_t *np_port,
                                         uint32_t *front)
{
    const uint32_t i = checked_port(fplate, k_fplate_bound);
    uint32_t discarded_type = 0;
    return through_table<&api::cvn_np_front_port_mapping_info, front_port_mapping_info>(
        i, np, np_port, front, &discarded_type);
}

// ---- slots 23-28: complexes and subslots ----

uint32_t complex_to_subslot(uint8_t) { return 0; }

uint32_t to_cpu_port_map(uint16_t np_num)
{
    cvn_np::require(np_num < np_count(), k_path, CVN_NP_CHECK("np_num < cvn_np_how_many()"));
    return common::to_cpu_port_map(np_num);
}

// ---- slots 29-36: front-port encoding: the port's index ----

uint32_t set_subslot_phy_port(uint16_t, uint32_t phy_port)
{
    cvn_np::require(phy_port < ports_in_use(), k_path, k_front_bound);
    return phy_port;
}

// The port in use on that instance with that port (low two bits): port p
// of instance n is port 4n + p, the only entry that has both.
uint32_t set_subslot_ifsubinst_ifsubinst_port(uint16_t, uint32_t ifsubinst, uint32_t port)
{
    const uint32_t i =
        ifsubinst < k_table_ports ? ifsubinst * k_ports_per_instance + (port & 3) : k_table_ports;
    cvn_np::require(i < ports_in_use(), k_path, CVN_NP_CHECK("0"));
    return i;
}

uint32_t get_subslot(uint32_t front)
{
    checked_port(front, k_sub_bound);
    return 0;
}

// The third argument already is the port's index.
uint32_t get_phys_port_tuple45(uint32_t, uint16_t, uint16_t ifsubinst, uint16_t)
{
    cvn_np::require(ifsubinst < ports_in_use(), k_path, k_sub_bound);
    return ifsubinst;
}

// The operation table, slot by slot.
constexpr cvn_np_api k_quellon_api = {
    .cvn_np_version_get = version_get,
    .cvn_max_mtu = max_mtu,
    .cvn_np_how_many = how_many,
    .cvn_np_chip_how_many = how_many,
    .cvn_np_port_info_get = port_info_get,
    .cvn_np_subslot_info_get = subslot_info_get,
    .cvn_np_port_info_subslot = port_info_subslot,
    .cvn_np_port_info_from_subslot_ifsubinst = port_info_from_subslot_ifsubinst,
    .cvn_np_front_port_to_np = front_port_to_np,
    .cvn_np_front_port_to_np_port = front_port_to_np_port,
    .cvn_np_front_port_to_port_type = front_port_to_port_type,
    .cvn_np_front_port_to_face_plate_port =
        common::face_plate_port_by_mapping<front_port_mapping_info>,
    .cvn_np_front_port_mapping_info = front_port_mapping_info,
    .cvn_np_info_num_local_ports = common::fixed_local_ports<k_path, k_np_id_check, k_ports_per_np>,
    .cvn_np_info_to_front_port = info_to_front_port,
    .cvn_np_info_to_fplate_porttype = info_to_fplate_porttype,
    .cvn_np_first_front_port_on_np = first_front_port_on_np,
    .cvn_np_first_phys_port_on_np = first_front_port_on_np,
    .cvn_np_first_fplate_porttype_on_np = first_fplate_porttype_on_np,
    .cvn_faceplate_porttype_to_np =
        faceplate_field<&api::cvn_np_front_port_to_np, front_port_to_np>,
    .cvn_faceplate_porttype_to_np_port =
        faceplate_field<&api::cvn_np_front_port_to_np_port, front_port_to_np_port>,
    .cvn_faceplate_porttype_to_phys_port = faceplate_porttype_to_phys_port,
    .cvn_faceplate_porttype_mapping_info = faceplate_porttype_mapping_info,
    .cvn_np_complex_to_subslot = complex_to_subslot,
    .cvn_np_complex_to_subslot_list = complexes::complex_to_subslot_list,
    .cvn_np_complex_to_np = complexes::complex_to_np,
    .cvn_np_set_if_subsys_type = common::set_if_subsys_type,
    .cvn_np_subslot_to_np_list = common::subslot_to_np_list,
    .cvn_np_to_cpu_port_map = to_cpu_port_map,
    .cvn_np_lib_set_subslot_phy_port = set_subslot_phy_port,
    .cvn_np_lib_set_subslot_ifsubinst_ifsubinst_port = set_subslot_ifsubinst_ifsubinst_port,
    .cvn_np_lib_get_subslot = get_subslot,
    .cvn_np_lib_get_subslot_port = common::get_port,
    .cvn_np_lib_get_port = port_field<k_sub_bound, &quellon_port_mapping_entry::phys_front_port>,
    .cvn_np_lib_get_ifsubinst = get_ifsubinst,
    .cvn_np_lib_get_ifsubinst_port =
        port_field<k_sub_bound, &quellon_port_mapping_entry::ifsubinst_port>,
    .cvn_np_lib_get_phys_port_tuple45 = get_phys_port_tuple45,
    .aux_cvn_np_front_port_to_ifsubsys = nullptr,
    .aux_cvn_np_port_info_get = nullptr,
    .aux_cvn_np_front_port_to_mapping_info = nullptr,
    .aux_cvn_np_info_num_local_ports = nullptr,
    .aux_cvn_np_info_to_mapping_info = nullptr,
    .aux_cvn_np_first_port_on_np = nullptr,
    .aux_cvn_faceplate_to_mapping_info = nullptr,
    .aux_np_port_to_mapping_info = nullptr,
    .aux_cvn_np_front_port_to_ifsubinst = nullptr,
};

} // namespace

extern "C" {

void cvn_np_quellon_api_fill(cvn_np_api *t) { *t = k_quellon_api; }

// The card type fixes the NP count, and with it the ports in use.
void cvn_np_quellon_init(void)
{
    const uint32_t ports = k_ports_per_np * how_many();
    cvn_np_qln_max_ports = static_cast<uint16_t>(ports);
    quellon_port_info_list[0].num_ports = ports;
    quellon_port_info_list[1].num_ports = k_ports_per_instance;
    cvn_np_subslot_info_quellon.max_ports_per_subslot = static_cast<uint16_t>(ports);
    cvn_np_subslot_info_quellon.max_of_ifsubsys_per_subslot =
        static_cast<uint16_t>(k_instances_per_np * how_many());
    cvn_np_subslot_info_quellon.spare = static_cast<uint16_t>(ports);
    cvn_np_quellon_api_fill(&cvn_np_api_quellon);
}

} // extern "C"
