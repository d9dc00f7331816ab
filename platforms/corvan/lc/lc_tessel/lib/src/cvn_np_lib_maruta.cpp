// cvn_np_lib_maruta.cpp - the maruta combo cards: two NPs, one per complex,
// one subslot; each NP has one 100GE port and a block of ten 10GE ports.
// Four interface-subsystem instances make up the combo: instance 0 is NP 0's
// 100GE port, instance 1 NP 0's 10GE ports, instances 2 and 3 the same for
// NP 1.  Front ports use the cage cards' 8-bit layout with the instance in
// bits 7..4, and a front port indexes the mapping table directly.
//
// Where a caller's index lies past a table (slots 19, 20, 22, 36, 39), it
// reads as the table's all-0xFF end entry: answers of 255, or 255 written.

#include <array>
#include <cstddef>
#include <iterator>
#include <span>

#include "cvn_np_common_slots.h"
#include "cvn_np_lib_tables.h"
#include "cvn_np_report.h"
#include "cvn_np_table_rows.h"

namespace {

namespace common = cvn_np::common;

constexpr const char k_path[] = "platforms/corvan/lc/lc_tessel/lib/src/cvn_np_lib_maruta.cpp";

constexpr uint32_t k_nps = 2;
constexpr uint32_t k_last_front = 57;  // NP 1's tenth 10GE port
constexpr uint32_t k_tenge_ports = 10; // per NP
constexpr uint16_t k_hundredge_np_port = 116;
constexpr uint16_t k_tenge_np_port = 204; // the first 10GE port of an NP
constexpr uint32_t k_ports_per_np = 11;
constexpr uint32_t k_no_port = 255;

using common::k_end_entry;
using common::same_entry;

// The NP and complex checks, shared by several slots.
constexpr cvn_np::check k_np_id_check = CVN_NP_CHECK("np_id < cvn_np_how_many()");
constexpr cvn_np::check k_np_complex_check = CVN_NP_CHECK("np_complex < cvn_np_how_many()");
using complexes = common::one_np_per_complex<k_path, k_np_complex_check>;

// Front port f: instance f >> 4 (even: the NP's 100GE port, odd: its 10GE
// block), port f & 0xF within it, NP instance / 2.
constexpr port_mapping_entry combo0_entry(std::size_t f)
{
    const auto front = static_cast<uint16_t>(f);
    const auto instance = static_cast<uint16_t>(f >> 4);
    const auto port = static_cast<uint16_t>(f & 0x0F);
    const auto np = static_cast<uint16_t>(instance / 2);
    if (f > k_last_front)
        return k_end_entry;
    if (instance % 2 == 0 && port == 0)
        return {front, np, k_hundredge_np_port, front, CVN_NP_PORT_TYPE_100GE};
    if (instance % 2 == 1 && port < k_tenge_ports)
        return {front, np, static_cast<uint16_t>(k_tenge_np_port + port), front,
                CVN_NP_PORT_TYPE_10GE};
    return k_end_entry;
}

// The tuple order: both NPs' 10GE blocks, then the two 100GE ports.
constexpr uint32_t tuple_front(std::size_t i)
{
    constexpr std::size_t block = k_tenge_ports;
    if (i < 2 * block)
        return static_cast<uint32_t>(16 + 32 * (i / block) + i % block);
    return i < 2 * block + 2 ? static_cast<uint32_t>(32 * (i - 2 * block)) : k_no_port;
}
constexpr port_mapping_entry tuple_entry(std::size_t i) { return combo0_entry(tuple_front(i)); }

// Element i of instance n's table: the front port of its i-th port.
template <uint32_t n> constexpr uint32_t instance_front(std::size_t i)
{
    return 16 * n + static_cast<uint32_t>(i);
}

} // namespace

extern "C" {

constexpr port_mapping_entry cvn_np_port_mapping_maruta_combo0[59] = {
    CVN_NP_ROWS(combo0_entry, 5, 9)};
constexpr port_mapping_entry cvn_np_port_mapping_maruta_combo0_tuple[23] = {
    CVN_NP_ROWS(tuple_entry, 2, 3)};

constexpr uint32_t cvn_phy_to_front_combo0_inst0[1] = {CVN_NP_ROWS(instance_front<0>, 0, 1)};
constexpr uint32_t cvn_phy_to_front_combo0_inst1[10] = {CVN_NP_ROWS(instance_front<1>, 1, 0)};
constexpr uint32_t cvn_phy_to_front_combo0_inst2[1] = {CVN_NP_ROWS(instance_front<2>, 0, 1)};
constexpr uint32_t cvn_phy_to_front_combo0_inst3[10] = {CVN_NP_ROWS(instance_front<3>, 1, 0)};

constexpr port_info port_info_maruta_combo0 = {24, CVN_NP_PORT_TYPE_COMBO};
constexpr port_info port_info_maruta_10g = {10, CVN_NP_PORT_TYPE_10GE};
constexpr port_info port_info_maruta_100g = {1, CVN_NP_PORT_TYPE_100GE};
constexpr port_info port_info_maruat_dummy = {0, CVN_NP_PORT_TYPE_END};

card_version maruta_card_version = {5, 'c'};
subslot_info maruta_card_subslot_info = {1, 24, 4, 255};

cvn_np_api cvn_np_api_maruta;

} // extern "C"

namespace {

// Every row as its rule gives it, and the telling rows:
// (phys_front_port, np, np_port, fplate_port, port_type).
constexpr auto same_front = [](uint32_t a, uint32_t b) { return a == b; };
static_assert(common::rows_follow(cvn_np_port_mapping_maruta_combo0, combo0_entry, same_entry) &&
              common::rows_follow(cvn_np_port_mapping_maruta_combo0_tuple, tuple_entry,
                                  same_entry));
static_assert(common::rows_follow(cvn_phy_to_front_combo0_inst0, instance_front<0>, same_front) &&
              common::rows_follow(cvn_phy_to_front_combo0_inst1, instance_front<1>, same_front) &&
              common::rows_follow(cvn_phy_to_front_combo0_inst2, instance_front<2>, same_front) &&
              common::rows_follow(cvn_phy_to_front_combo0_inst3, instance_front<3>, same_front));
static_assert(same_entry(cvn_np_port_mapping_maruta_combo0[0], {0, 0, 116, 0, 4}));
static_assert(same_entry(cvn_np_port_mapping_maruta_combo0[5], k_end_entry));
static_assert(same_entry(cvn_np_port_mapping_maruta_combo0[25], {25, 0, 213, 25, 1}));
static_assert(same_entry(cvn_np_port_mapping_maruta_combo0[32], {32, 1, 116, 32, 4}));
static_assert(same_entry(cvn_np_port_mapping_maruta_combo0[48], {48, 1, 204, 48, 1}));
static_assert(same_entry(cvn_np_port_mapping_maruta_combo0[58], k_end_entry));
static_assert(same_entry(cvn_np_port_mapping_maruta_combo0_tuple[19], {57, 1, 213, 57, 1}));
static_assert(same_entry(cvn_np_port_mapping_maruta_combo0_tuple[21], {32, 1, 116, 32, 4}));
static_assert(same_entry(cvn_np_port_mapping_maruta_combo0_tuple[22], k_end_entry));
static_assert(cvn_phy_to_front_combo0_inst1[9] == 25 && cvn_phy_to_front_combo0_inst2[0] == 32);

// Entry `index` of a table whose last entry is the end entry; an index past
// the table reads as that end entry.
template <std::size_t n>
const port_mapping_entry &entry_at(const port_mapping_entry (&table)[n], uint32_t index)
{
    return table[index < n ? index : n - 1];
}

// An entry's fields to the outputs that are given, in this order.
void put_entry(const port_mapping_entry &e, uint32_t *np, uint32_t *np_port, uint32_t *front,
               uint32_t *fplate_port, uint32_t *port_type)
{
    common::put(np, e.np);
    common::put(np_port, e.np_port);
    common::put(front, e.phys_front_port);
    common::put(fplate_port, e.fplate_port);
    common::put(port_type, e.port_type);
}

// Slots that others reach through the selected table (37, 38, 41).
uint32_t front_port_to_ifsubsys(uint32_t, uint32_t *, uint32_t *, uint32_t *);
const port_info *port_info_of_type(uint32_t, uint32_t, uint32_t);
void info_to_mapping_info(uint32_t, uint32_t, uint32_t, uint32_t *, uint32_t *, uint32_t *);

using common::through_table;
using api = cvn_np_api;

// ---- slots 0-7: card summary ----

const card_version *version_get() { return &maruta_card_version; }
uint32_t max_mtu() { return 9216; }
uint32_t how_many() { return k_nps; }
const subslot_info *subslot_info_get() { return &maruta_card_subslot_info; }

// The card's list is that of NP 0's 100GE instance.
const port_info *port_info_get()
{
    return through_table<&api::aux_cvn_np_port_info_get, port_info_of_type>(
        0, 0, CVN_NP_IFSUB_TYPE_MARUTA_100GE);
}

const port_info *port_info_subslot(uint16_t subslot)
{
    cvn_np::require(subslot == 0, k_path, CVN_NP_CHECK("subslot == 0"));
    return &port_info_maruta_combo0;
}

const port_info *port_info_from_subslot_ifsubinst(uint16_t subslot, uint16_t ifsubinst)
{
    cvn_np::require(subslot == 0, k_path, CVN_NP_CHECK("subslot == 0"));
    const uint32_t type =
        common::query_place<common::set_subslot_ifsubinst_ifsubinst_port, front_port_to_ifsubsys>(
            0, ifsubinst)
            .type;
    return through_table<&api::aux_cvn_np_port_info_get, port_info_of_type>(0, ifsubinst, type);
}

// ---- slots 8-12: front port to NP, straight from the table ----

template <auto field> uint32_t front_port_field(uint32_t front)
{
    return front > k_last_front ? k_no_port : cvn_np_port_mapping_maruta_combo0[front].*field;
}

uint32_t front_port_mapping_info(uint32_t front, uint32_t *np, uint32_t *np_port,
                                 uint32_t *fplate_port, uint32_t *port_type)
{
    if (front > k_last_front)
        return 0;
    put_entry(cvn_np_port_mapping_maruta_combo0[front], np, np_port, nullptr, fplate_port,
              port_type);
    return 0;
}

// ---- slots 13-18: NP to front port ----

bool np_port_answer(uint32_t, uint32_t, uint32_t *, uint32_t *, uint32_t &);
[[gnu::noinline]] uint32_t info_to_fplate_porttype_by_steps(uint32_t, uint32_t, uint32_t *,
                                                            uint32_t *);
uint32_t info_to_fplate_porttype(uint32_t np_id, uint32_t np_port, uint32_t *front,
                                 uint32_t *port_type)
{
    uint32_t status = 0;
    if (np_port_answer(np_id, np_port, front, port_type, status)) [[likely]]
        return status;
    return info_to_fplate_porttype_by_steps(np_id, np_port, front, port_type);
}
uint32_t info_to_fplate_porttype_by_steps(uint32_t np_id, uint32_t np_port, uint32_t *front,
                                          uint32_t *port_type)
{
    if (np_id >= through_table<&api::cvn_np_how_many, how_many>())
        return CVN_NP_ERR_INVALID;
    through_table<&api::aux_cvn_np_info_to_mapping_info, info_to_mapping_info>(
        np_id, np_port, 0, front, nullptr, port_type);
    return 0;
}

// Slots 14 and 15 while slots 2 and 41 are maruta's own: slot 41 reads its
// index, with no call and no stack frame (false: take the steps).
bool np_port_answer(uint32_t np_id, uint32_t np_port, uint32_t *front, uint32_t *port_type,
                    uint32_t &status)
{
    if (!common::holds<&api::cvn_np_how_many, how_many>() ||
        !common::holds<&api::aux_cvn_np_info_to_mapping_info, info_to_mapping_info>() ||
        np_port >= 256)
        return false;
    status = np_id < k_nps ? 0 : CVN_NP_ERR_INVALID;
    if (np_id < k_nps)
        info_to_mapping_info(np_id, np_port, 0, front, nullptr, port_type);
    return true;
}

[[gnu::noinline]] uint32_t info_to_front_port_by_steps(uint32_t np_id, uint32_t np_port,
                                                       uint32_t *front)
{
    uint32_t discarded_type = 0;
    return through_table<&api::cvn_np_info_to_fplate_porttype, info_to_fplate_porttype>(
        np_id, np_port, front, &discarded_type);
}
uint32_t info_to_front_port(uint32_t np_id, uint32_t np_port, uint32_t *front)
{
    uint32_t status = 0;
    if (common::holds<&api::cvn_np_info_to_fplate_porttype, info_to_fplate_porttype>() &&
        np_port_answer(np_id, np_port, front, nullptr, status)) [[likely]]
        return status;
    return info_to_front_port_by_steps(np_id, np_port, front);
}

// NP 0 starts at its 100GE port, NP 1 (any other id) at its first 10GE port.
uint32_t first_front_port_on_np(uint32_t np_id, uint32_t *front)
{
    common::put(front, np_id == 0 ? 0 : 48);
    return 0;
}

uint32_t first_phys_port_on_np(uint32_t, uint32_t *) { return CVN_NP_ERR_INVALID; }

// The NP's 100GE port, by its place in the tuple order (20 or 21).
uint32_t first_fplate_porttype_on_np(uint32_t np_id, uint32_t *port_type, uint32_t *fplate_port)
{
    common::put(port_type, CVN_NP_PORT_TYPE_100GE);
    common::put(fplate_port, np_id == 0 ? 20 : 21);
    return 0;
}

// ---- slots 19-22: faceplate port to NP; the faceplate port is the front
// port, and the port type is not needed ----

template <uint16_t port_mapping_entry::*field> uint32_t faceplate_field(uint32_t, uint32_t fplate)
{
    return entry_at(cvn_np_port_mapping_maruta_combo0, fplate).*field;
}

uint32_t faceplate_porttype_to_phys_port(uint32_t, uint32_t fplate) { return fplate; }

uint32_t faceplate_porttype_mapping_info(uint32_t, uint32_t fplate, uint32_t *np, uint32_t *np_port,
                                         uint32_t *front)
{
    put_entry(entry_at(cvn_np_port_mapping_maruta_combo0, fplate), np, np_port, front, nullptr,
              nullptr);
    return 0;
}

// ---- slots 23-28: complexes and subslots ----

uint32_t complex_to_subslot(uint8_t np_complex)
{
    cvn_np::require(np_complex < cvn_np_how_many(), k_path, k_np_complex_check);
    return 0;
}

// ---- slot 36: a front port from the tuple order ----

uint32_t get_phys_port_tuple45(uint32_t, uint16_t, uint16_t ifsubinst, uint16_t ifsubinst_port)
{
    const uint32_t index = uint32_t{ifsubinst} + ifsubinst_port;
    return entry_at(cvn_np_port_mapping_maruta_combo0_tuple, index).phys_front_port;
}

// ---- slots 37-45: auxiliary layer ----

// No bound on the instance; the subslot written is 0, whatever slot 31 says.
uint32_t front_port_to_ifsubsys(uint32_t front, uint32_t *subslot, uint32_t *ifsubsys,
                                uint32_t *type)
{
    return common::ask_platform(common::place_of(front), 0, subslot, ifsubsys, type);
}

const port_info *port_info_of_type(uint32_t subslot_num, uint32_t, uint32_t type)
{
    cvn_np::require(subslot_num == 0, k_path, CVN_NP_CHECK("subslot_num == 0"));
    if (type == CVN_NP_IFSUB_TYPE_MARUTA_100GE)
        return &port_info_maruta_100g;
    if (type == CVN_NP_IFSUB_TYPE_MARUTA_10GE)
        return &port_info_maruta_10g;
    return &port_info_maruat_dummy;
}

// The index-th port of an instance; the type is not needed.  An index past
// the instance reads as front port 255, and so as the end entry.
void front_port_to_mapping_info(uint32_t instance, uint32_t index, uint32_t, uint32_t *np,
                                uint32_t *np_port, uint32_t *fplate_port, uint32_t *port_type)
{
    static constexpr std::span<const uint32_t> k_instances[] = {
        cvn_phy_to_front_combo0_inst0, cvn_phy_to_front_combo0_inst1, cvn_phy_to_front_combo0_inst2,
        cvn_phy_to_front_combo0_inst3};
    cvn_np::require(instance < std::size(k_instances), k_path, CVN_NP_CHECK("0"));
    const std::span<const uint32_t> fronts = k_instances[instance];
    const uint32_t front = index < fronts.size() ? fronts[index] : k_no_port;
    put_entry(entry_at(cvn_np_port_mapping_maruta_combo0, front), np, np_port, nullptr, fplate_port,
              port_type);
}

// The first of the 58 ports with that NP and NP-local port, k_no_port for
// none.  The filler entries match NP 255, NP-local port 255 only.
constexpr uint32_t first_front_of(uint32_t np_num, uint32_t np_port)
{
    for (uint32_t f = 0; f <= k_last_front; ++f) {
        const port_mapping_entry &e = cvn_np_port_mapping_maruta_combo0[f];
        if (e.np == np_num && e.np_port == np_port)
            return f;
    }
    return k_no_port;
}

// That search answered at compile time for every NP-local port of the NPs.
constexpr auto k_front_of_np_port = [] {
    std::array<std::array<uint8_t, 256>, k_nps> index{};
    for (uint32_t np = 0; np < k_nps; ++np)
        for (uint32_t p = 0; p < 256; ++p)
            index[np][p] = static_cast<uint8_t>(first_front_of(np, p));
    return index;
}();

// The type is not needed; nothing is written when no port matches.
void info_to_mapping_info(uint32_t np_num, uint32_t np_port, uint32_t, uint32_t *front,
                          uint32_t *fplate_port, uint32_t *port_type)
{
    const uint32_t f = np_num < k_nps && np_port < 256 ? k_front_of_np_port[np_num][np_port]
                                                       : first_front_of(np_num, np_port);
    if (f == k_no_port)
        return;
    put_entry(cvn_np_port_mapping_maruta_combo0[f], nullptr, nullptr, front, fplate_port,
              port_type);
}

// The front port's place in the tuple order: the first of the 23 entries
// with that front port, the end entry (255, place 22) included.
uint32_t front_port_to_ifsubinst(uint32_t front, uint32_t *index)
{
    if (index == nullptr)
        return CVN_NP_EINVAL;
    for (uint32_t i = 0; i < std::size(cvn_np_port_mapping_maruta_combo0_tuple); ++i)
        if (cvn_np_port_mapping_maruta_combo0_tuple[i].phys_front_port == front) {
            *index = i;
            return 0;
        }
    return CVN_NP_EINVAL;
}

// The operation table, slot by slot.
constexpr cvn_np_api k_maruta_api = {
    .cvn_np_version_get = version_get,
    .cvn_max_mtu = max_mtu,
    .cvn_np_how_many = how_many,
    .cvn_np_chip_how_many = how_many,
    .cvn_np_port_info_get = port_info_get,
    .cvn_np_subslot_info_get = subslot_info_get,
    .cvn_np_port_info_subslot = port_info_subslot,
    .cvn_np_port_info_from_subslot_ifsubinst = port_info_from_subslot_ifsubinst,
    .cvn_np_front_port_to_np = front_port_field<&port_mapping_entry::np>,
    .cvn_np_front_port_to_np_port = front_port_field<&port_mapping_entry::np_port>,
    .cvn_np_front_port_to_port_type = front_port_field<&port_mapping_entry::port_type>,
    .cvn_np_front_port_to_face_plate_port =
        common::face_plate_port_by_mapping<front_port_mapping_info>,
    .cvn_np_front_port_mapping_info = front_port_mapping_info,
    .cvn_np_info_num_local_ports = common::fixed_local_ports<k_path, k_np_id_check, k_ports_per_np>,
    .cvn_np_info_to_front_port = info_to_front_port,
    .cvn_np_info_to_fplate_porttype = info_to_fplate_porttype,
    .cvn_np_first_front_port_on_np = first_front_port_on_np,
    .cvn_np_first_phys_port_on_np = first_phys_port_on_np,
    .cvn_np_first_fplate_porttype_on_np = first_fplate_porttype_on_np,
    .cvn_faceplate_porttype_to_np = faceplate_field<&port_mapping_entry::np>,
    .cvn_faceplate_porttype_to_np_port = faceplate_field<&port_mapping_entry::np_port>,
    .cvn_faceplate_porttype_to_phys_port = faceplate_porttype_to_phys_port,
    .cvn_faceplate_porttype_mapping_info = faceplate_porttype_mapping_info,
    .cvn_np_complex_to_subslot = complex_to_subslot,
    .cvn_np_complex_to_subslot_list = complexes::complex_to_subslot_list,
    .cvn_np_complex_to_np = complexes::complex_to_np,
    .cvn_np_set_if_subsys_type = common::set_if_subsys_type,
    .cvn_np_subslot_to_np_list = common::subslot_to_np_list,
    .cvn_np_to_cpu_port_map = common::to_cpu_port_map,
    .cvn_np_lib_set_subslot_phy_port = common::set_subslot_phy_port,
    .cvn_np_lib_set_subslot_ifsubinst_ifsubinst_port = common::set_subslot_ifsubinst_ifsubinst_port,
    .cvn_np_lib_get_subslot = common::get_subslot,
    .cvn_np_lib_get_subslot_port = common::get_port,
    .cvn_np_lib_get_port = common::get_port,
    .cvn_np_lib_get_ifsubinst = common::get_ifsubinst,
    .cvn_np_lib_get_ifsubinst_port = common::get_ifsubinst_port,
    .cvn_np_lib_get_phys_port_tuple45 = get_phys_port_tuple45,
    .aux_cvn_np_front_port_to_ifsubsys = front_port_to_ifsubsys,
    .aux_cvn_np_port_info_get = port_info_of_type,
    .aux_cvn_np_front_port_to_mapping_info = front_port_to_mapping_info,
    .aux_cvn_np_info_num_local_ports = nullptr,
    .aux_cvn_np_info_to_mapping_info = info_to_mapping_info,
    .aux_cvn_np_first_port_on_np = nullptr,
    .aux_cvn_faceplate_to_mapping_info = nullptr,
    .aux_np_port_to_mapping_info = nullptr,
    .aux_cvn_np_front_port_to_ifsubinst = front_port_to_ifsubinst,
};

} // namespace

extern "C" {

void cvn_np_maruta_api_fill(cvn_np_api *t) { *t = k_maruta_api; }

// All of maruta's data is static; there is nothing to point or fill but the
// operation table.
void cvn_np_maruta_init(void) { cvn_np_maruta_api_fill(&cvn_np_api_maruta); }

} // extern "C"
