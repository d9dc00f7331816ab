// cvn_np_tolvar_engine.h - the operations of the tolvar cards.
//
// A tolvar card has two subslots.  What sits in a subslot is an interface
// subsystem (EP) whose type the platform reports, asked afresh on every
// question; each EP type the card knows has one row of an EP data table:
// its ports as mapping entries in local-port order, and its port list.  A
// split subslot (574, 575, 577) holds two instances, each reporting a
// per-instance type (0x10000-0x10003); instance 1's entries carry local
// ports 16 and up.
//
// Front and faceplate ports are 8 bits: bits 7..6 the subslot, then the
// port (bits 5..0) or, on a split subslot, the instance (bits 5..4) and the
// instance port (bits 3..0).
//
// Both tolvar families run these operations over their own tables; a family
// file describes its tables, its texts and its differences in one
// `tolvar::family` record, engine<family> provides the slot functions and
// fills the operation table with them, and the family file defines its
// family functions over them.  An inner step calls the family's own
// operation directly only while the selected operation table still holds
// it, else the public function, so every inner step follows the table.
#ifndef CVN_NP_TOLVAR_ENGINE_H
#define CVN_NP_TOLVAR_ENGINE_H

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

#include "cvn_np_common_slots.h"
#include "cvn_np_lib.h"
#include "cvn_np_lib_tables.h"
#include "cvn_np_platform.h"
#include "cvn_np_report.h"

namespace cvn_np::tolvar {

// ---- Interface-subsystem types --------------------------------------------

// An EP of one set of ports.
constexpr bool is_plain(uint32_t type)
{
    switch (type) {
    case CVN_NP_IFSUB_TYPE_TV_20X_NONE:
    case CVN_NP_IFSUB_TYPE_TV_2X10GE:
    case CVN_NP_IFSUB_TYPE_TV_4X10GE:
    case CVN_NP_IFSUB_TYPE_TV_8X10GE:
    case CVN_NP_IFSUB_TYPE_TV_2X40GE:
    case CVN_NP_IFSUB_TYPE_TV_1X40GE:
    case CVN_NP_IFSUB_TYPE_TV_16X10GE:
    case CVN_NP_IFSUB_TYPE_TV_20X10GE:
    case CVN_NP_IFSUB_TYPE_TV_20X10GE_B:
        return true;
    default:
        return false;
    }
}
// An EP split in two instances.
constexpr bool is_split(uint32_t type)
{
    return type == CVN_NP_IFSUB_TYPE_TV_SPLIT || type == CVN_NP_IFSUB_TYPE_TV_SPLIT_ONE ||
           type == CVN_NP_IFSUB_TYPE_TV_SPLIT_B;
}
// The type one instance of a split subslot reports.
constexpr bool is_per_instance(uint32_t type)
{
    return type >= CVN_NP_IFSUB_TYPE_100GE && type <= CVN_NP_IFSUB_TYPE_40GE_ALT;
}

// Split subslots whose second instance an NP-local port can name (575 is
// split for the encoding only).
constexpr bool has_second_instance(uint32_t type)
{
    return type == CVN_NP_IFSUB_TYPE_TV_SPLIT || type == CVN_NP_IFSUB_TYPE_TV_SPLIT_B;
}

// A front port of a subslot in the plain form.
constexpr uint32_t compose(uint32_t subslot, uint32_t port)
{
    return ((subslot << 6) & 0xC0) | (port & 0x3F);
}
// A front port of a split subslot's instance.
constexpr uint32_t compose_split(uint32_t subslot, uint32_t instance, uint32_t port)
{
    return ((instance << 4) & 0x30) | (port & 0x0F) | ((subslot << 6) & 0xC0);
}

inline constexpr uint32_t k_instances_per_subslot = 2;

// The NP summary of a tolvar card with `nps` NPs (one per complex) and the
// EP data table `rows`: two subslots of up to 20 10GE, four 40GE or two
// 100GE ports.
template <std::size_t info_types>
constexpr np_info card_np_info(uint16_t nps, const cvn_np_ep_data (&)[info_types])
{
    return {.sw_version = 1,
            .sw_status = 0,
            .num_np = nps,
            .num_complex = nps,
            .np_per_complex = 1,
            .num_cage = 0,
            .cage_per_complex = 2,
            .ver_major = 5,
            .ver_minor = 99,
            .max_mtu = 9216,
            .max_fpport_100g = 2,
            .max_fpport_40g = 4,
            .max_fpport_10g = 20,
            .num_subslot = 2,
            .max_port_cage = 0,
            .port_subslot_100g = 2,
            .port_subslot_40g = 4,
            .port_subslot_10g = 20,
            .port_cage_100g = 1,
            .port_cage_40g = 2,
            .port_cage_40g_alt = 1,
            .port_cage_10g = 10,
            .num_info_types = static_cast<uint16_t>(info_types)};
}

// What the platform answers for (subslot, ifsubsys); type NONE unless the
// call succeeded.
using common::place_answer;
inline place_answer ask(uint32_t subslot, uint32_t ifsubsys)
{
    const ifsubsys_id id = {0, subslot, ifsubsys};
    ifsubsys_info info{};
    const uint32_t status = rva_ifsubsys_get_info(&id, &info);
    return {status, subslot, ifsubsys, status == 0 ? info.type : CVN_NP_IFSUB_TYPE_NONE};
}

// ---- EP data rows ----------------------------------------------------------

// `count` ports from front port `front`, their NP-local ports from `np_port`
// in steps of `step`.
struct run {
    uint16_t count;
    uint16_t front;
    uint16_t np_port;
    uint16_t step;
};

// An EP's ports: one or two runs, all of one port type; every entry is on
// NP 0 and its faceplate port is its front port.  `list_count` is the count
// its port list gives.
struct ep_wiring {
    uint32_t port_type;
    uint32_t list_count;
    run first;
    run second;

    constexpr std::size_t ports() const { return std::size_t{first.count} + second.count; }
};

// The EP's entries in local-port order, and the list of pointers to them.
template <const ep_wiring &w> inline constexpr auto ep_entries = [] {
    std::array<port_mapping_entry, w.ports()> e{};
    for (std::size_t k = 0; k != w.ports(); ++k) {
        const run &r = k < w.first.count ? w.first : w.second;
        const std::size_t i = k < w.first.count ? k : k - w.first.count;
        const auto front = static_cast<uint16_t>(r.front + i);
        e[k] = {front, 0, static_cast<uint16_t>(r.np_port + i * r.step), front, w.port_type};
    }
    return e;
}();
template <const ep_wiring &w> inline constexpr auto ep_entry_pointers = [] {
    std::array<const port_mapping_entry *, w.ports()> p{};
    for (std::size_t k = 0; k != w.ports(); ++k)
        p[k] = ep_entries<w>.data() + k;
    return p;
}();

template <const ep_wiring &w> inline constexpr port_info ep_port_list[2] = {
    {w.list_count, w.port_type}, {0, CVN_NP_PORT_TYPE_END}};

// The EPs' ports on the NP's lower port ranges (the 2-slice card's
// subslots, the 1-slice card's bay 0): (count, first front port, first NP
// port, NP-port step).
inline constexpr ep_wiring k_2x10g = {CVN_NP_PORT_TYPE_10GE, 2, {2, 0, 192, 2}, {}};
inline constexpr ep_wiring k_4x10g = {CVN_NP_PORT_TYPE_10GE, 4, {4, 0, 192, 2}, {}};
inline constexpr ep_wiring k_8x10g = {CVN_NP_PORT_TYPE_10GE, 8, {8, 0, 192, 1}, {}};
inline constexpr ep_wiring k_16x10g = {CVN_NP_PORT_TYPE_10GE, 16, {8, 0, 192, 1}, {8, 8, 204, 1}};
inline constexpr ep_wiring k_20x10g = {
    CVN_NP_PORT_TYPE_10GE, 20, {10, 0, 192, 1}, {10, 10, 204, 1}};
inline constexpr ep_wiring k_2x40g = {CVN_NP_PORT_TYPE_40GE, 2, {2, 0, 96, 1}, {}};
inline constexpr ep_wiring k_1x40g = {CVN_NP_PORT_TYPE_40GE, 1, {1, 0, 96, 1}, {}};
inline constexpr ep_wiring k_20x_none = {
    CVN_NP_PORT_TYPE_NONE, 20, {10, 0, 16, 1}, {10, 10, 28, 1}};
// Split instances: instance 0's ports, then instance 1's from local port 16.
inline constexpr ep_wiring k_100g_pair = {
    CVN_NP_PORT_TYPE_100GE, 2, {1, 0, 116, 1}, {1, 16, 117, 1}};
inline constexpr ep_wiring k_10g_pair = {
    CVN_NP_PORT_TYPE_10GE, 10, {10, 0, 192, 1}, {10, 16, 204, 1}};
inline constexpr ep_wiring k_40g_pair = {CVN_NP_PORT_TYPE_40GE, 2, {2, 0, 96, 1}, {2, 16, 99, 1}};

// The row of `ep_type` over the EP `w`; rows built on the same wiring share
// its entries and its list.
template <const ep_wiring &w> constexpr cvn_np_ep_data
ep_row(uint32_t ep_type, uint32_t spare, uint32_t np_port_base, uint32_t np_port_span)
{
    return {ep_type,
            1,
            spare,
            spare,
            np_port_base,
            np_port_span,
            static_cast<uint32_t>(w.ports()),
            w.port_type,
            &ep_entries<w>[0],
            ep_entry_pointers<w>.data(),
            ep_port_list<w>};
}

// The NP-local ports of `count` entries from `e` run from the first's to
// the last's.
constexpr bool in_np_ports(const port_mapping_entry *const *e, std::size_t count, uint32_t np_port)
{
    return count != 0 && np_port >= e[0]->np_port && np_port <= e[count - 1]->np_port;
}

// The instance of a split subslot that an NP-local port belongs to, by the
// ranges of the instance rows of `rows` (instance 0's entries, then
// instance 1's); -1 for neither.
template <std::size_t n>
constexpr int instance_of_np_port(const cvn_np_ep_data (&rows)[n], uint32_t np_port)
{
    for (std::size_t i = 0; i < k_instances_per_subslot; ++i)
        for (const cvn_np_ep_data &row : rows) {
            const std::size_t from = i * row.num_ports / 2, to = (i + 1) * row.num_ports / 2;
            if (is_per_instance(row.ep_type) && in_np_ports(row.entries + from, to - from, np_port))
                return static_cast<int>(i);
        }
    return -1;
}

// A rule over the NP-local ports made a table at compile time; a port past
// the table (and past every entry's) answers -1.
struct np_port_table {
    std::array<int8_t, 256> of{};
    template <class Rule> constexpr explicit np_port_table(Rule rule)
    {
        for (uint32_t p = 0; p < of.size(); ++p)
            of[p] = static_cast<int8_t>(rule(p));
    }
    constexpr int operator()(uint32_t np_port) const
    {
        return np_port < of.size() ? of[np_port] : -1;
    }
};

// A type's place in an index of rows: the EP types, then the instance
// types; k_type_keys for a type without a row anywhere.
inline constexpr uint32_t k_type_keys =
    CVN_NP_IFSUB_TYPE_TV_20X10GE_B - CVN_NP_IFSUB_TYPE_TV_20X_NONE + 5;
constexpr uint32_t type_key(uint32_t type)
{
    if (type >= CVN_NP_IFSUB_TYPE_TV_20X_NONE && type <= CVN_NP_IFSUB_TYPE_TV_20X10GE_B)
        return type - CVN_NP_IFSUB_TYPE_TV_20X_NONE;
    if (type >= CVN_NP_IFSUB_TYPE_100GE && type <= CVN_NP_IFSUB_TYPE_40GE_ALT)
        return type - CVN_NP_IFSUB_TYPE_100GE + k_type_keys - 4;
    return k_type_keys;
}
// The type of a key; NONE, a type without a row, for k_type_keys.
constexpr uint32_t type_of_key(uint32_t key)
{
    if (key < k_type_keys - 4)
        return CVN_NP_IFSUB_TYPE_TV_20X_NONE + key;
    return key < k_type_keys ? CVN_NP_IFSUB_TYPE_100GE + key - (k_type_keys - 4)
                             : CVN_NP_IFSUB_TYPE_NONE;
}
// The first row of each type in a table, by type_key.
using type_index = std::array<const cvn_np_ep_data *, k_type_keys>;
template <std::size_t n> constexpr type_index rows_by_type(const cvn_np_ep_data (&rows)[n])
{
    type_index index{};
    for (std::size_t i = n; i-- > 0;)
        if (type_key(rows[i].ep_type) < k_type_keys)
            index[type_key(rows[i].ep_type)] = &rows[i];
    return index;
}
// The first row of `type` in the index, or NULL.
constexpr const cvn_np_ep_data *row_for(const type_index &index, uint32_t type)
{
    const uint32_t key = type_key(type);
    return key < k_type_keys ? index[key] : nullptr;
}

// Entry `k` of a row, or NULL where the row has no such entry.
inline const port_mapping_entry *entry_at(const cvn_np_ep_data &row, uint64_t k)
{
    return k < row.num_ports ? row.entries[k] : nullptr;
}

// ---- Family description ------------------------------------------------------

// The family's condition texts, one per distinct condition.
struct texts {
    check subslot;          // slots 6, 7: the subslot against num_subslot
    check subslot_num;      // slots 38, 40
    check np_num;           // slots 40, 41
    check np_id;            // slots 13, 16, 18
    check np_complex;       // slots 23, 24, 25
    check front_needed;     // slot 16 (and 17 where it answers)
    check port_type_needed; // slot 18
    check fplate_needed;    // slot 18
    check bay;              // slots 39, 42, 43: "subslot < CVN_NP_TOTAL_SUBSLOT_TOLVAR"
    check row_port_type;    // slot 43: the caller's port type is the row's
    check unknown;          // "0": a type the operation does not map
    check first_port_bay;   // slot 17 where it answers: "subslot < CVN_NP_TOTAL_SUBSLOTS"
};

// Where an NP-local port lives: the subslot, the instance, and the type of
// the EP or instance there (NONE when the platform reports nothing).  A
// non-zero status: the port is not found.
inline constexpr place_answer k_not_found = {CVN_NP_ERR_INVALID, 0, 0, CVN_NP_IFSUB_TYPE_NONE};
// The port lives in instance `instance` of `subslot`: not found when the
// platform does not answer for it.
inline place_answer place_at(uint32_t subslot, uint32_t instance)
{
    const place_answer there = ask(subslot, instance);
    return there.status != 0 ? k_not_found : there;
}

struct family {
    const char *path; // the family's source, for the assertion report
    texts text;

    // Tables the init installs, and the current-record pointers.
    const np_info *np_info_table;
    const np_info **card_np_info;
    const cvn_np_ep_data *info_types_table;
    const cvn_np_ep_data **card_info_types;
    card_version *card_version_record;
    subslot_info *card_subslot_info;
    const port_info *dummy_port_info;

    // The family's differences.
    // The EP data lookup in the family's own tables: the first row of a
    // type for a subslot, or NULL.
    const cvn_np_ep_data *(*row_of)(uint32_t subslot, uint32_t type);
    // The lookup searches the first num_info_types rows of the current
    // info-types record (else the family's own tables, whatever it holds).
    bool rows_by_current_record;
    place_answer (*place_np_port)(uint32_t np_id, uint32_t np_port);
    // Entry index of a split instance's port; past the row's entries for none.
    // `faceplate`: the port is a faceplate port (slot 43), else a front port.
    uint64_t (*instance_entry)(uint32_t port, uint32_t type, const cvn_np_ep_data &row,
                               bool faceplate);
    // One NP serves both subslots (the 1-slice card): operations that start
    // from an NP or a complex walk both bays, entries keep their own NP,
    // slot 41 finds the subslot from the NP-local port, and slot 17 gives
    // the first front port of a subslot.  Otherwise NP n serves subslot n.
    bool one_np_for_both_bays;
    bool alt_40ge_mapped;                     // slots 38 and 39 serve 0x10003 from its row
    bool first_front_port_hides_query_status; // slot 16: a failed query answers CVN_NP_ERR_INVALID
};

// ---- The operations ------------------------------------------------------------

template <const family &F> struct engine : common::card_summary<F> {
    enum output : uint8_t { out_np, out_np_port, out_fplate, out_port_type, out_front };

    // An inner step through slot `slot`: the family's own operation while
    // the selected operation table still holds it, else the public function.
    template <auto slot, class... A> static auto step(A... a)
    {
        return common::through_table<slot, own_ops().*slot>(a...);
    }
    static uint32_t nps() { return step<&cvn_np_api::cvn_np_how_many>(); }

    static const np_info &info() { return **F.card_np_info; }
    // The first row of `type` in the subslot's table, or NULL; while the
    // current records are those init installs, from the compile-time index.
    static const cvn_np_ep_data *row_of(uint32_t subslot, uint32_t type)
    {
        if (own_rows()) [[likely]]
            return F.row_of(subslot, type);
        const cvn_np_ep_data *rows = *F.card_info_types;
        for (uint16_t i = 0; rows != nullptr && i < info().num_info_types; ++i)
            if (rows[i].ep_type == type)
                return &rows[i];
        return nullptr;
    }
    // The lookup reads the family's own rows, those the compile-time
    // answers are built from.
    static bool own_rows()
    {
        return !F.rows_by_current_record ||
               (*F.card_info_types == F.info_types_table &&
                info().num_info_types == F.np_info_table->num_info_types);
    }
    static void require(bool ok, const check &c) { cvn_np::require(ok, F.path, c); }

    // The subslots an NP serves, first to last.
    struct bays {
        uint32_t first;
        uint32_t last;
    };
    static bays bays_of_np(uint32_t np_id)
    {
        if (F.one_np_for_both_bays)
            return {0, info().num_subslot - 1u};
        return {np_id, np_id};
    }
    static uint32_t np_of_entry(const port_mapping_entry &e, const cvn_np_ep_data &row,
                                uint32_t subslot)
    {
        return F.one_np_for_both_bays ? e.np : e.np + row.np_per_subslot * subslot;
    }

    // ---- slots 4, 6, 7: port lists (slots 0-3, 5 and 25: the card summary) ----

    // The list of the first subslot whose first instance reports a type.
    static const port_info *port_info_get()
    {
        for (uint32_t s = 0; s < info().num_subslot; ++s) {
            const place_answer a = query_place(s, 0);
            if (a.type != CVN_NP_IFSUB_TYPE_NONE)
                return step<&cvn_np_api::aux_cvn_np_port_info_get>(a.subslot, a.ifsubsys, a.type);
        }
        return F.dummy_port_info;
    }

    static const port_info *port_info_subslot(uint16_t subslot)
    {
        require(subslot < info().num_subslot, F.text.subslot);
        const place_answer a = query_place(subslot, 0);
        if (a.type == CVN_NP_IFSUB_TYPE_NONE)
            return F.dummy_port_info;
        return step<&cvn_np_api::aux_cvn_np_port_info_get>(subslot, 0, a.type);
    }

    static const port_info *port_info_from_subslot_ifsubinst(uint16_t subslot, uint16_t ifsubinst)
    {
        require(subslot < info().num_subslot, F.text.subslot);
        const place_answer a = ask(subslot, ifsubinst);
        if (a.type == CVN_NP_IFSUB_TYPE_NONE)
            return F.dummy_port_info;
        return step<&cvn_np_api::aux_cvn_np_port_info_get>(subslot, ifsubinst, a.type);
    }

    // ---- slots 8-12: front port to NP ----

    // Slots 8-10: one field of the front port's mapping (0 when none is
    // written); CVN_NP_ERR_INVALID when the subslot reports nothing or the
    // query fails.
    template <output field> static uint32_t front_port_field(uint32_t front)
    {
        uint32_t value = 0;
        const uint32_t status = front_port_mapping_info(
            front, field == out_np ? &value : nullptr, field == out_np_port ? &value : nullptr,
            nullptr, field == out_port_type ? &value : nullptr);
        return status != 0 ? CVN_NP_ERR_INVALID : value;
    }

    static uint32_t front_port_mapping_info(uint32_t front, uint32_t *np, uint32_t *np_port,
                                            uint32_t *fplate_port, uint32_t *port_type)
    {
        const place_answer a = query(front);
        if (a.status != 0)
            return a.status;
        if (a.type == CVN_NP_IFSUB_TYPE_NONE)
            return CVN_NP_ERR_INVALID;
        step<&cvn_np_api::aux_cvn_np_front_port_to_mapping_info>(a.ifsubsys, front, a.type, np,
                                                                 np_port, fplate_port, port_type);
        return 0;
    }

    static uint32_t front_port_to_face_plate_port(uint32_t front, uint32_t *fplate_port,
                                                  uint32_t *port_type)
    {
        uint32_t fplate = 0, type = 0;
        const uint32_t status = front_port_mapping_info(front, nullptr, nullptr, &fplate, &type);
        if (status != 0)
            return status;
        common::put(fplate_port, fplate);
        common::put(port_type, type);
        return 0;
    }

    // ---- slots 13-18: NP to front port ----

    // The local ports of the NP's subslots: a plain EP's (the 16-port EP's
    // are not counted), each instance's of a split one; nothing for a
    // subslot whose query fails (its type is NONE).
    static uint32_t info_num_local_ports(uint32_t np_id)
    {
        require(np_id < nps(), F.text.np_id);
        const bays b = bays_of_np(np_id);
        uint32_t sum = 0;
        for (uint32_t s = b.first; s <= b.last; ++s) {
            const place_answer a = ask(s, CVN_NP_IFSUB_ANY);
            const bool plain = is_plain(a.type) && a.type != CVN_NP_IFSUB_TYPE_TV_16X10GE;
            const uint32_t instances = plain ? 1 : is_split(a.type) ? k_instances_per_subslot : 0;
            for (uint32_t i = 0; i < instances; ++i) {
                const place_answer q = query_place(s, i);
                if (q.type != CVN_NP_IFSUB_TYPE_NONE)
                    sum += step<&cvn_np_api::aux_cvn_np_info_num_local_ports>(s, np_id, q.type);
            }
        }
        return sum;
    }

    // Slots 14 and 15: the entry of an NP-local port, by the type where the
    // port lives; 0 with nothing written when nothing is installed there.
    // The faceplate port is the entry's front port with the subslot bits,
    // the same value on every tolvar entry.
    static uint32_t info_to_fplate_porttype(uint32_t np_id, uint32_t np_port, uint32_t *fplate_port,
                                            uint32_t *port_type)
    {
        if (np_id >= nps())
            return CVN_NP_ERR_INVALID;
        const place_answer p = F.place_np_port(np_id, np_port);
        if (p.status != 0)
            return p.status;
        if (p.type == CVN_NP_IFSUB_TYPE_NONE)
            return 0;
        step<&cvn_np_api::aux_cvn_np_info_to_mapping_info>(np_id, np_port, p.type, fplate_port,
                                                           nullptr, port_type);
        return 0;
    }
    static uint32_t info_to_front_port(uint32_t np_id, uint32_t np_port, uint32_t *front)
    {
        return info_to_fplate_porttype(np_id, np_port, front, nullptr);
    }

    // Slots 16-18: the first entry of the first of subslots `b` that
    // reports a type.  When none does: CVN_NP_ERR_INVALID, or the last
    // subslot's failed query status unless `hide_status`.
    static uint32_t first_port_of(bays b, uint32_t *front, uint32_t *fplate_port,
                                  uint32_t *port_type, bool hide_status)
    {
        for (uint32_t s = b.first;; ++s) {
            const place_answer a = query_place(s, 0);
            if (a.status == 0 && a.type != CVN_NP_IFSUB_TYPE_NONE)
                return step<&cvn_np_api::aux_cvn_np_first_port_on_np>(s, a.ifsubsys, a.type, front,
                                                                      fplate_port, port_type);
            if (s >= b.last)
                return a.status == 0 || hide_status ? CVN_NP_ERR_INVALID : a.status;
        }
    }

    static uint32_t first_front_port_on_np(uint32_t np_id, uint32_t *phys_front_port)
    {
        require(phys_front_port != nullptr, F.text.front_needed);
        require(np_id < nps(), F.text.np_id);
        return first_port_of(bays_of_np(np_id), phys_front_port, nullptr, nullptr,
                             F.first_front_port_hides_query_status);
    }

    // Slot 17: the first front port of one subslot where one NP serves both;
    // rejected otherwise.
    static uint32_t first_phys_port_on_np(uint32_t subslot, uint32_t *phys_front_port)
    {
        if (!F.one_np_for_both_bays)
            return CVN_NP_ERR_INVALID;
        require(phys_front_port != nullptr, F.text.front_needed);
        require(subslot < CVN_NP_TOTAL_SUBSLOTS, F.text.first_port_bay);
        return first_port_of({subslot, subslot}, phys_front_port, nullptr, nullptr, true);
    }

    static uint32_t first_fplate_porttype_on_np(uint32_t np_id, uint32_t *port_type,
                                                uint32_t *fplate_port)
    {
        require(port_type != nullptr, F.text.port_type_needed);
        require(fplate_port != nullptr, F.text.fplate_needed);
        require(np_id < nps(), F.text.np_id);
        return first_port_of(bays_of_np(np_id), nullptr, fplate_port, port_type, false);
    }

    // ---- slots 19-22: faceplate port to NP ----

    template <output field> static uint32_t faceplate_field(uint32_t port_type, uint32_t fplate)
    {
        uint32_t value = 0;
        const uint32_t status = step<&cvn_np_api::aux_cvn_faceplate_to_mapping_info>(
            step<&cvn_np_api::cvn_np_lib_get_ifsubinst>(fplate), fplate, port_type,
            field == out_np ? &value : nullptr, field == out_np_port ? &value : nullptr,
            field == out_front ? &value : nullptr);
        return status != 0 ? status : value;
    }

    static uint32_t faceplate_porttype_mapping_info(uint32_t port_type, uint32_t fplate,
                                                    uint32_t *np, uint32_t *np_port,
                                                    uint32_t *front)
    {
        step<&cvn_np_api::aux_cvn_faceplate_to_mapping_info>(
            step<&cvn_np_api::cvn_np_lib_get_ifsubinst>(fplate), fplate, port_type, np, np_port,
            front);
        return 0;
    }

    // ---- slots 23-28: complexes and subslots ----

    static uint32_t complex_to_subslot(uint8_t np_complex)
    {
        require(np_complex < nps(), F.text.np_complex);
        return (np_complex / (*F.card_info_types)->np_per_subslot) & 0xFF;
    }

    // The complex's subslots: their count, and each of them from
    // first_subslot on (one on the 2-slice card, both bays on the 1-slice).
    static uint32_t complex_to_subslot_list(uint8_t np_complex, uint32_t *count,
                                            uint32_t *first_subslot)
    {
        require(np_complex < nps(), F.text.np_complex);
        if (count == nullptr)
            return 0;
        const bays b = bays_of_np(np_complex);
        *count = b.last - b.first + 1;
        if (first_subslot != nullptr)
            for (uint32_t s = b.first; s <= b.last; ++s)
                first_subslot[s - b.first] = s;
        return 0;
    }

    static uint32_t subslot_to_np_list(uint8_t subslot, uint32_t *count, uint32_t *first_np)
    {
        if (count == nullptr || first_np == nullptr)
            return CVN_NP_ERR_INVALID;
        *first_np = F.one_np_for_both_bays ? 0 : subslot;
        *count = 1;
        return 0;
    }

    // ---- slots 29-36: front-port encoding ----

    static uint32_t set_subslot_phy_port(uint16_t subslot, uint32_t phy_port)
    {
        return compose(subslot, phy_port);
    }

    // The split form where the subslot reports a split EP, else (also when
    // the platform does not answer) the plain form.
    static uint32_t set_subslot_ifsubinst_ifsubinst_port(uint16_t subslot, uint32_t ifsubinst,
                                                         uint32_t ifsubinst_port)
    {
        const place_answer a = ask(subslot, CVN_NP_IFSUB_ANY);
        if (a.status == 0 && is_split(a.type))
            return compose_split(subslot, ifsubinst, ifsubinst_port);
        return compose(subslot, ifsubinst_port);
    }

    static uint32_t get_subslot(uint32_t front) { return (front & 0xC0) >> 6; }
    static uint32_t get_subslot_port(uint32_t front) { return front & 0xFF; }
    static uint32_t get_port(uint32_t front) { return front & 0x3F; }

    // The instance bits on a split subslot, 0 on another; CVN_NP_ERR_INVALID
    // when the subslot reports nothing or does not answer.
    static uint32_t get_ifsubinst(uint32_t front)
    {
        const place_answer a = ask(get_subslot(front), CVN_NP_IFSUB_ANY);
        if (a.type == CVN_NP_IFSUB_TYPE_NONE)
            return CVN_NP_ERR_INVALID;
        return is_split(a.type) ? (front & 0x30) >> 4 : 0;
    }

    // The instance port on a split subslot, the port on another (an empty
    // one included); CVN_NP_ERR_INVALID when the platform does not answer.
    static uint32_t get_ifsubinst_port(uint32_t front)
    {
        const place_answer a = ask(get_subslot(front), CVN_NP_IFSUB_ANY);
        if (a.status != 0)
            return CVN_NP_ERR_INVALID;
        return is_split(a.type) ? front & 0x0F : front & 0x3F;
    }

    // On a plain subslot `a` is the port; on a split one the instance, with
    // `b` the instance port.  0 for a subslot type the card does not know.
    static uint32_t get_phys_port_tuple45(uint32_t, uint16_t subslot, uint16_t a, uint16_t b)
    {
        const place_answer answer = ask(subslot, CVN_NP_IFSUB_ANY);
        if (answer.type == CVN_NP_IFSUB_TYPE_NONE)
            return CVN_NP_ERR_INVALID;
        if (is_plain(answer.type))
            return compose(subslot, a);
        if (is_split(answer.type))
            return compose_split(subslot, a, b);
        return 0;
    }

    // ---- slots 37-45: auxiliary layer ----

    // The place is (subslot, instance) as slots 31 and 34 decode them, even
    // when slot 34 has no answer.
    static constexpr auto front_port_to_ifsubsys =
        common::front_port_to_ifsubsys<get_subslot, get_ifsubinst>;
    // Slot 37 through the table, on a front port or on port 0 of an
    // instance (encoded by slot 30).
    static place_answer query(uint32_t front)
    {
        return common::query_front_port<front_port_to_ifsubsys>(front);
    }
    static place_answer query_place(uint32_t subslot, uint32_t place)
    {
        return common::query_place<set_subslot_ifsubinst_ifsubinst_port, front_port_to_ifsubsys>(
            subslot, place);
    }

    static constexpr bool maps_front_ports_of(uint32_t type)
    {
        if (type == CVN_NP_IFSUB_TYPE_40GE_ALT)
            return F.alt_40ge_mapped;
        return is_plain(type) || is_per_instance(type);
    }

    // Slot 38 once the subslot is checked: the type's row's list (NULL
    // where the subslot's table has no row); the empty list for a type
    // without ports of its own (no table has a row for such a type).
    static constexpr const port_info *list_of_row(const cvn_np_ep_data *row, uint32_t type)
    {
        if (row != nullptr)
            return row->port_info_list;
        return maps_front_ports_of(type) ? nullptr : F.dummy_port_info;
    }
    using lists_by_key = std::array<std::array<const port_info *, std::bit_ceil(k_type_keys + 1)>,
                                    CVN_NP_TOTAL_SUBSLOT_TOLVAR>;
    static constexpr lists_by_key lists_of_types()
    {
        lists_by_key t{};
        for (uint32_t s = 0; s < t.size(); ++s)
            for (uint32_t key = 0; key <= k_type_keys; ++key)
                t[s][key] = list_of_row(F.row_of(s, type_of_key(key)), type_of_key(key));
        return t;
    }

    // Slot 38, read from the lists of every subslot and type made at
    // compile time.
    static const port_info *port_info_of_type(uint32_t subslot_num, uint32_t, uint32_t type)
    {
        static constexpr lists_by_key lists = lists_of_types();
        require(subslot_num < info().num_subslot, F.text.subslot_num);
        if (subslot_num < lists.size() && own_rows()) [[likely]]
            return lists[subslot_num][type_key(type)];
        return list_of_row(row_of(subslot_num, type), type);
    }

    // The entry a front or faceplate port names in `row`: plain EPs by the
    // port bits, a 100GE instance by the instance bits, the others as the
    // family indexes them.
    static const port_mapping_entry *entry_of_port(const cvn_np_ep_data &row, uint32_t type,
                                                   uint32_t port, bool faceplate)
    {
        if (is_plain(type))
            return entry_at(row, step<&cvn_np_api::cvn_np_lib_get_port>(port));
        if (type == CVN_NP_IFSUB_TYPE_100GE)
            return entry_at(row, faceplate
                                     ? step<&cvn_np_api::cvn_np_lib_get_ifsubinst>(port)
                                     : (step<&cvn_np_api::cvn_np_lib_get_port>(port) >> 4) & 3);
        return entry_at(row, F.instance_entry(port, type, row, faceplate));
    }

    // Slot 39: a lookup failure or a port without an entry writes nothing.
    static void front_port_to_mapping_info(uint32_t, uint32_t front, uint32_t type, uint32_t *np,
                                           uint32_t *np_port, uint32_t *fplate_port,
                                           uint32_t *port_type)
    {
        require(maps_front_ports_of(type), F.text.unknown);
        const uint32_t subslot = step<&cvn_np_api::cvn_np_lib_get_subslot>(front);
        require(subslot < CVN_NP_TOTAL_SUBSLOT_TOLVAR, F.text.bay);
        const cvn_np_ep_data *row = row_of(subslot, type);
        const port_mapping_entry *e =
            row != nullptr ? entry_of_port(*row, type, front, false) : nullptr;
        if (e == nullptr)
            return;
        common::put(np, np_of_entry(*e, *row, subslot));
        common::put(np_port, e->np_port);
        common::put(fplate_port, compose(subslot, e->fplate_port));
        common::put(port_type, e->port_type);
    }

    // Slot 40: ports of one EP or instance.  A plain type without a row in
    // the subslot's table counts 0.
    static uint32_t aux_num_local_ports(uint32_t subslot_num, uint32_t np_num, uint32_t type)
    {
        require(subslot_num < info().num_subslot, F.text.subslot_num);
        require(np_num < info().num_complex, F.text.np_num);
        // The ports of one instance, by its type from 100GE on.
        constexpr uint16_t np_info::*per_instance[] = {
            &np_info::port_cage_100g, &np_info::port_cage_40g, &np_info::port_cage_10g,
            &np_info::port_cage_40g_alt};
        if (is_per_instance(type))
            return info().*per_instance[type - CVN_NP_IFSUB_TYPE_100GE];
        require(is_plain(type), F.text.unknown);
        const cvn_np_ep_data *row = row_of(subslot_num, type);
        return row != nullptr ? row->num_ports : 0;
    }

    // Slot 41: the outputs come back with the subslot bits, also when no
    // entry matched; a type without a row writes nothing.
    // Where slot 44 finds each NP-local port below 256 in the row of each
    // subslot and type (k_no_place: nowhere), built at compile time from the
    // rows, which are constant (a row with a NULL entry would stop the build).
    static constexpr uint8_t k_no_place = 0xFF;
    using places_by_key =
        std::array<std::array<std::array<uint8_t, 256>, k_type_keys>, CVN_NP_TOTAL_SUBSLOT_TOLVAR>;
    static constexpr places_by_key np_port_places()
    {
        places_by_key t{};
        for (uint32_t s = 0; s < t.size(); ++s)
            for (uint32_t key = 0; key < k_type_keys; ++key)
                for (uint32_t p = 0; p < 256; ++p) {
                    const cvn_np_ep_data *row = F.row_of(s, type_of_key(key));
                    uint32_t i = 0;
                    while (row != nullptr && i < row->num_ports && row->entries[i]->np_port != p)
                        ++i;
                    t[s][key][p] =
                        row != nullptr && i < row->num_ports ? static_cast<uint8_t>(i) : k_no_place;
                }
        return t;
    }
    static constexpr places_by_key k_np_port_places = np_port_places();

    static void info_to_mapping_info(uint32_t np_num, uint32_t np_port, uint32_t type,
                                     uint32_t *front, uint32_t *fplate_port, uint32_t *port_type)
    {
        require(np_num < info().num_complex, F.text.np_num);
        uint32_t subslot = np_num;
        if (F.one_np_for_both_bays) {
            const place_answer p = F.place_np_port(np_num, np_port);
            if (p.status != 0)
                return;
            subslot = p.subslot;
        }
        require(is_plain(type) || is_per_instance(type), F.text.unknown);
        const cvn_np_ep_data *row = row_of(subslot, type);
        if (row == nullptr)
            return;
        if (common::holds<&cvn_np_api::aux_np_port_to_mapping_info,
                          own_ops().aux_np_port_to_mapping_info>() &&
            subslot < k_np_port_places.size() && np_port < 256 && own_rows()) [[likely]] {
            const uint8_t i = k_np_port_places[subslot][type_key(type)][np_port];
            if (i != k_no_place)
                common::put_entry(*row->entries[i], front, fplate_port, port_type);
        } else {
            step<&cvn_np_api::aux_np_port_to_mapping_info>(row->entries, np_port, row->num_ports,
                                                           front, fplate_port, port_type);
        }
        if (front != nullptr)
            *front = compose(subslot, *front);
        if (fplate_port != nullptr)
            *fplate_port = compose(subslot, *fplate_port);
    }

    // Slot 42: the first entry of the type's row in a subslot.
    static uint32_t first_port_on_np(uint32_t subslot, uint32_t, uint32_t type, uint32_t *front,
                                     uint32_t *fplate_port, uint32_t *port_type)
    {
        if (!is_plain(type) && !is_per_instance(type))
            return CVN_NP_ERR_INVALID;
        require(subslot < CVN_NP_TOTAL_SUBSLOT_TOLVAR, F.text.bay);
        const cvn_np_ep_data *row = row_of(subslot, type);
        if (row == nullptr)
            return CVN_NP_ERR_INVALID;
        common::put(front, compose(subslot, row->first_entry->phys_front_port));
        common::put(fplate_port, compose(subslot, row->first_entry->fplate_port));
        common::put(port_type, row->first_entry->port_type);
        return 0;
    }

    // Slot 43: by the type the platform reports where the faceplate port
    // is; CVN_NP_ERR_INVALID with nothing written when nothing is there,
    // the type has no row, or the port names no entry.
    static uint32_t faceplate_to_mapping_info(uint32_t, uint32_t fplate, uint32_t port_type,
                                              uint32_t *np, uint32_t *np_port, uint32_t *front)
    {
        const place_answer a = query(fplate);
        if (a.status != 0)
            return a.status;
        if (a.type == CVN_NP_IFSUB_TYPE_NONE)
            return CVN_NP_ERR_INVALID;
        require(is_plain(a.type) || is_per_instance(a.type), F.text.unknown);
        const uint32_t subslot = step<&cvn_np_api::cvn_np_lib_get_subslot>(fplate);
        require(subslot < CVN_NP_TOTAL_SUBSLOT_TOLVAR, F.text.bay);
        const cvn_np_ep_data *row = row_of(subslot, a.type);
        if (row == nullptr)
            return CVN_NP_ERR_INVALID;
        require(port_type == row->port_type, F.text.row_port_type);
        const port_mapping_entry *e = entry_of_port(*row, a.type, fplate, true);
        if (e == nullptr)
            return CVN_NP_ERR_INVALID;
        common::put(np, np_of_entry(*e, *row, subslot));
        common::put(np_port, e->np_port);
        common::put(front, compose(subslot, e->phys_front_port));
        return 0;
    }

    static constexpr auto np_port_to_mapping_info = common::np_port_to_mapping_info;

    // Slot 45: the instance bits where an instance type answers, else the
    // port bits; 22 without an output.
    static uint32_t front_port_to_ifsubinst(uint32_t front, uint32_t *ifsubinst)
    {
        if (ifsubinst == nullptr)
            return CVN_NP_EINVAL;
        const place_answer a = ask(step<&cvn_np_api::cvn_np_lib_get_subslot>(front),
                                   step<&cvn_np_api::cvn_np_lib_get_ifsubinst>(front));
        if (a.status != 0)
            return a.status;
        *ifsubinst = is_per_instance(a.type) ? (front & 0x30) >> 4 : front & 0x3F;
        return 0;
    }

    // ---- init ----

    // The family's operations, slot by slot.
    static constexpr cvn_np_api own_ops()
    {
        cvn_np_api t{};
        common::fill_slots<engine>(&t);
        return t;
    }

    // Points the current-record pointers at the family's tables, fills the
    // version and subslot records (the widest row of the card's EP data
    // table, bay 0's on the 1-slice card), then the operation table.
    static void init(cvn_np_api *table)
    {
        *F.card_np_info = F.np_info_table;
        *F.card_info_types = F.info_types_table;
        *F.card_version_record = {info().ver_major, info().ver_minor};
        uint16_t widest = F.card_subslot_info->max_ports_per_subslot;
        for (std::size_t i = 0; i < info().num_info_types; ++i)
            if (F.info_types_table[i].num_ports > widest)
                widest = static_cast<uint16_t>(F.info_types_table[i].num_ports);
        *F.card_subslot_info = {info().num_subslot, widest, k_instances_per_subslot, 0};
        *table = own_ops();
    }
};

} // namespace cvn_np::tolvar

#endif // CVN_NP_TOLVAR_ENGINE_H
