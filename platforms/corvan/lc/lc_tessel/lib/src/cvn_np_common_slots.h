// cvn_np_common_slots.h - operations that several families answer alike:
// the 8-bit front-port layout of the cage cards (also maruta's), the
// platform query of slot 37, the card summary of the families with an
// np_info record, and the slots whose answer does not depend on the card's
// wiring; and the end entry that closes a mapping table.
#ifndef CVN_NP_COMMON_SLOTS_H
#define CVN_NP_COMMON_SLOTS_H

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "cvn_np_lib.h"
#include "cvn_np_platform.h"
#include "cvn_np_report.h"

namespace cvn_np {

// The lazy road: serve the card the platform says we run on.
void cvn_np_lib_init_my_card();

namespace common {

// ---- Calling a slot ----

// What a public function answers when the family leaves its slot empty.
template <class R> R empty_slot_answer()
{
    if constexpr (std::is_pointer_v<R>)
        return nullptr;
    else if constexpr (!std::is_void_v<R>)
        return CVN_NP_ERR_INVALID;
}

// Slot `slot` of the selected table, called with `args`.
template <auto slot, class... Args> auto call_slot(Args... args)
{
    const auto fn = card_np_api->*slot;
    if (fn == nullptr) [[unlikely]]
        return empty_slot_answer<decltype(fn(args...))>();
    return fn(args...);
}

// Out of line, so that the common road needs no stack frame.
template <auto slot, class... Args> [[gnu::cold, gnu::noinline]] auto init_then_call(Args... args)
{
    cvn_np_lib_init_my_card();
    return call_slot<slot>(args...);
}

// What the public function of `slot` does: initialise if needed, then call
// the selected family's slot with the caller's arguments.
template <auto slot, class... Args> auto forward(Args... args)
{
    if (initialized == 0) [[unlikely]]
        return init_then_call<slot>(args...);
    return call_slot<slot>(args...);
}

// The public function of `slot`, but a direct call of the family's own
// `own` while the selected table holds it: an inner step costs one pointer
// comparison, and a slot that a caller has replaced is still obeyed.
template <auto slot, class... Args> [[gnu::cold, gnu::noinline]] auto step_by_table(Args... args)
{
    return forward<slot>(args...);
}
// The library is initialised and the selected table holds `own` in `slot`.
template <auto slot, auto own> bool holds()
{
    return initialized != 0 && card_np_api->*slot == own;
}
template <auto slot, auto own, class... Args>
[[gnu::always_inline]] inline auto through_table(Args... args)
{
    if (holds<slot, own>()) [[likely]]
        return own(args...);
    return step_by_table<slot>(args...);
}

// The entry that closes a mapping table: every field 0xFF.
inline constexpr port_mapping_entry k_end_entry = {0xFF, 0xFF, 0xFF, 0xFF, 0xFF};

constexpr bool same_entry(const port_mapping_entry &a, const port_mapping_entry &b)
{
    return a.phys_front_port == b.phys_front_port && a.np == b.np && a.np_port == b.np_port &&
           a.fplate_port == b.fplate_port && a.port_type == b.port_type;
}

// Every row of `table` is the `rule`'s row of its index, by `same`: rows
// spelled out by a count of their own fail this when the count is off.
template <class T, std::size_t n, class Rule, class Same>
constexpr bool rows_follow(const T (&table)[n], Rule rule, Same same)
{
    for (std::size_t i = 0; i < n; ++i)
        if (!same(table[i], rule(i)))
            return false;
    return true;
}

// Writes an optional output.
template <class T> inline void put(T *out, uint32_t value)
{
    if (out != nullptr)
        *out = static_cast<T>(value);
}

// ---- The 8-bit front-port layout: bits 7..4 the cage (or instance), bits
// 3..0 the port within it; the subslot is not encoded (slots 29-35). ----

inline uint32_t set_subslot_phy_port(uint16_t, uint32_t phy_port) { return phy_port & 0xFF; }
inline uint32_t set_subslot_ifsubinst_ifsubinst_port(uint16_t, uint32_t ifsubinst,
                                                     uint32_t ifsubinst_port)
{
    return ((ifsubinst << 4) & 0xFF) | (ifsubinst_port & 0x0F);
}
constexpr uint32_t get_subslot(uint32_t) { return 0; }
constexpr uint32_t get_port(uint32_t front) { return front & 0xFF; }
constexpr uint32_t get_ifsubinst(uint32_t front) { return (front & 0xF0) >> 4; }
constexpr uint32_t get_ifsubinst_port(uint32_t front) { return front & 0x0F; }

// Writes an entry's front port, faceplate port and port type, each where
// the caller gave a pointer.
inline void put_entry(const port_mapping_entry &e, uint32_t *front, uint32_t *fplate_port,
                      uint32_t *port_type)
{
    put(front, e.phys_front_port);
    put(fplate_port, e.fplate_port);
    put(port_type, e.port_type);
}

// Slot 44: the first of `count` entries that carries NP-local port
// `np_port` gives its front port, faceplate port and port type; nothing is
// written when none does (NULL pointers in the list are passed over).
inline void np_port_to_mapping_info(const port_mapping_entry *const *entries, uint32_t np_port,
                                    uint32_t count, uint32_t *front, uint32_t *fplate_port,
                                    uint32_t *port_type)
{
    for (uint32_t i = 0; entries != nullptr && i < count; ++i) {
        const port_mapping_entry *e = entries[i];
        if (e != nullptr && e->np_port == np_port) {
            put_entry(*e, front, fplate_port, port_type);
            return;
        }
    }
}

// ---- Slot 37: what the platform reports at a front port's place ----

// The place (subslot, cage or instance) a front port names, by slots 31 and
// 34 in that order; `own_subslot` and `own_place` are the family's own.
template <auto own_subslot = get_subslot, auto own_place = get_ifsubinst>
ifsubsys_id place_of(uint32_t front)
{
    return {0, through_table<&cvn_np_api::cvn_np_lib_get_subslot, own_subslot>(front),
            through_table<&cvn_np_api::cvn_np_lib_get_ifsubinst, own_place>(front)};
}

// Asks the platform about `id`.  A non-zero status is returned and nothing
// is written; otherwise `subslot` gets `reported_subslot`, `ifsubsys` the
// id's ifsubsys and `type` the answer's type (each where non-NULL), and the
// result is 0.
inline uint32_t ask_platform(const ifsubsys_id &id, uint32_t reported_subslot, uint32_t *subslot,
                             uint32_t *ifsubsys, uint32_t *type)
{
    ifsubsys_info answer{};
    const uint32_t status = rva_ifsubsys_get_info(&id, &answer);
    if (status != 0)
        return status;
    put(subslot, reported_subslot);
    put(ifsubsys, id.ifsubsys);
    put(type, answer.type);
    return 0;
}

// Slot 37 of a family that checks nothing before it asks; slots 31 and 34
// are `own_subslot` and `own_place` while the table holds them.
template <auto own_subslot, auto own_place> uint32_t
front_port_to_ifsubsys(uint32_t front, uint32_t *subslot, uint32_t *ifsubsys, uint32_t *type)
{
    const ifsubsys_id id = place_of<own_subslot, own_place>(front);
    return ask_platform(id, id.subslot, subslot, ifsubsys, type);
}

// What slot 37 (the family's own `own`) reports for a front port's cage or
// instance, asked through the selected table.  The type stays NONE (and
// subslot and place 0) when the query fails.
struct place_answer {
    uint32_t status;
    uint32_t subslot;
    uint32_t ifsubsys;
    uint32_t type;
};
template <auto own> [[gnu::always_inline]] inline place_answer query_front_port(uint32_t front)
{
    place_answer a{0, 0, 0, CVN_NP_IFSUB_TYPE_NONE};
    a.status = through_table<&cvn_np_api::aux_cvn_np_front_port_to_ifsubsys, own>(
        front, &a.subslot, &a.ifsubsys, &a.type);
    return a;
}
// Slot 37 on port 0 of cage (or instance) `place` of a subslot, the front
// port encoded by slot 30 (the family's own `own_encode`).
template <auto own_encode, auto own>
[[gnu::always_inline]] inline place_answer query_place(uint32_t subslot, uint32_t place)
{
    return query_front_port<own>(
        through_table<&cvn_np_api::cvn_np_lib_set_subslot_ifsubinst_ifsubinst_port, own_encode>(
            static_cast<uint16_t>(subslot), place, uint32_t{0}));
}

// ---- Slots 0-3, 5 and 25 of a family with an np_info record ----

// F names the record (F.card_np_info), the run-time records its init fills
// (F.card_version_record, F.card_subslot_info), its source path and its
// np_complex check.
template <const auto &F> struct card_summary {
    static const card_version *version_get() { return F.card_version_record; }
    static uint32_t max_mtu() { return (*F.card_np_info)->max_mtu; }
    static uint32_t how_many() { return (*F.card_np_info)->num_complex; }
    static uint32_t chip_how_many() { return (*F.card_np_info)->num_np; }
    static const subslot_info *subslot_info_get() { return F.card_subslot_info; }

    // The complex's first NP; its second where it has two and `second` is set.
    static uint32_t complex_to_np(uint8_t np_complex, uint32_t second)
    {
        require(np_complex < cvn_np_how_many(), F.path, F.text.np_complex);
        const uint32_t per_complex = (*F.card_np_info)->np_per_complex;
        const uint32_t first = np_complex * per_complex;
        return per_complex != 1 && second != 0 ? first + 1 : first;
    }
};

// ---- Slots with a fixed answer ----

// Slot 26: the type is the platform's business; accepted and ignored.
inline uint32_t set_if_subsys_type(uint32_t, uint16_t) { return 0; }

// Slot 27: every NP of the card sits on its one subslot.
inline uint32_t subslot_to_np_list(uint8_t, uint32_t *count, uint32_t *first_np)
{
    if (count == nullptr || first_np == nullptr)
        return CVN_NP_ERR_INVALID;
    *count = cvn_np_chip_how_many();
    *first_np = 0;
    return 0;
}

// Slot 28: the NP port towards the host CPU.
inline uint32_t to_cpu_port_map(uint16_t) { return 3; }

// Slot 24 once the complex is checked: one subslot, the complex's own.
inline uint32_t one_subslot_of_complex(uint8_t np_complex, uint32_t *count, uint32_t *first_subslot)
{
    if (count == nullptr)
        return 0;
    *count = 1;
    if (first_subslot != nullptr)
        *first_subslot = cvn_np_complex_to_subslot(np_complex);
    return 0;
}

// Slot 11 as the family's slot 12 asked for the faceplate port and type.
template <auto mapping_info>
uint32_t face_plate_port_by_mapping(uint32_t front, uint32_t *fplate_port, uint32_t *port_type)
{
    return mapping_info(front, nullptr, nullptr, fplate_port, port_type);
}

// Slot 13 of a family whose every NP uses `ports` NP-local ports; `np_id`
// is the family's own check, so the report names its source and line.
template <const char *path, const check &np_id, uint32_t ports>
uint32_t fixed_local_ports(uint32_t np)
{
    require(np < cvn_np_how_many(), path, np_id);
    return ports;
}

// Slots 24 and 25 of a family whose complex is one NP on the card's one
// subslot, checked with the family's own np_complex check.
template <const char *path, const check &np_complex> struct one_np_per_complex {
    static uint32_t complex_to_subslot_list(uint8_t c, uint32_t *count, uint32_t *first_subslot)
    {
        require(c < cvn_np_how_many(), path, np_complex);
        return one_subslot_of_complex(c, count, first_subslot);
    }
    static uint32_t complex_to_np(uint8_t c, uint32_t)
    {
        require(c < cvn_np_how_many(), path, np_complex);
        return c;
    }
};

// An engine's operation table, slot = operation: every slot gets the
// engine's operation of the same meaning (the cage and tolvar engines).
template <class E> constexpr void fill_slots(cvn_np_api *t)
{
    t->cvn_np_version_get = E::version_get;
    t->cvn_max_mtu = E::max_mtu;
    t->cvn_np_how_many = E::how_many;
    t->cvn_np_chip_how_many = E::chip_how_many;
    t->cvn_np_port_info_get = E::port_info_get;
    t->cvn_np_subslot_info_get = E::subslot_info_get;
    t->cvn_np_port_info_subslot = E::port_info_subslot;
    t->cvn_np_port_info_from_subslot_ifsubinst = E::port_info_from_subslot_ifsubinst;
    t->cvn_np_front_port_to_np = E::template front_port_field<E::out_np>;
    t->cvn_np_front_port_to_np_port = E::template front_port_field<E::out_np_port>;
    t->cvn_np_front_port_to_port_type = E::template front_port_field<E::out_port_type>;
    t->cvn_np_front_port_to_face_plate_port = E::front_port_to_face_plate_port;
    t->cvn_np_front_port_mapping_info = E::front_port_mapping_info;
    t->cvn_np_info_num_local_ports = E::info_num_local_ports;
    t->cvn_np_info_to_front_port = E::info_to_front_port;
    t->cvn_np_info_to_fplate_porttype = E::info_to_fplate_porttype;
    t->cvn_np_first_front_port_on_np = E::first_front_port_on_np;
    t->cvn_np_first_phys_port_on_np = E::first_phys_port_on_np;
    t->cvn_np_first_fplate_porttype_on_np = E::first_fplate_porttype_on_np;
    t->cvn_faceplate_porttype_to_np = E::template faceplate_field<E::out_np>;
    t->cvn_faceplate_porttype_to_np_port = E::template faceplate_field<E::out_np_port>;
    t->cvn_faceplate_porttype_to_phys_port = E::template faceplate_field<E::out_front>;
    t->cvn_faceplate_porttype_mapping_info = E::faceplate_porttype_mapping_info;
    t->cvn_np_complex_to_subslot = E::complex_to_subslot;
    t->cvn_np_complex_to_subslot_list = E::complex_to_subslot_list;
    t->cvn_np_complex_to_np = E::complex_to_np;
    t->cvn_np_set_if_subsys_type = common::set_if_subsys_type;
    t->cvn_np_subslot_to_np_list = E::subslot_to_np_list;
    t->cvn_np_to_cpu_port_map = common::to_cpu_port_map;
    t->cvn_np_lib_set_subslot_phy_port = E::set_subslot_phy_port;
    t->cvn_np_lib_set_subslot_ifsubinst_ifsubinst_port = E::set_subslot_ifsubinst_ifsubinst_port;
    t->cvn_np_lib_get_subslot = E::get_subslot;
    t->cvn_np_lib_get_subslot_port = E::get_subslot_port;
    t->cvn_np_lib_get_port = E::get_port;
    t->cvn_np_lib_get_ifsubinst = E::get_ifsubinst;
    t->cvn_np_lib_get_ifsubinst_port = E::get_ifsubinst_port;
    t->cvn_np_lib_get_phys_port_tuple45 = E::get_phys_port_tuple45;
    t->aux_cvn_np_front_port_to_ifsubsys = E::front_port_to_ifsubsys;
    t->aux_cvn_np_port_info_get = E::port_info_of_type;
    t->aux_cvn_np_front_port_to_mapping_info = E::front_port_to_mapping_info;
    t->aux_cvn_np_info_num_local_ports = E::aux_num_local_ports;
    t->aux_cvn_np_info_to_mapping_info = E::info_to_mapping_info;
    t->aux_cvn_np_first_port_on_np = E::first_port_on_np;
    t->aux_cvn_faceplate_to_mapping_info = E::faceplate_to_mapping_info;
    t->aux_np_port_to_mapping_info = E::np_port_to_mapping_info;
    t->aux_cvn_np_front_port_to_ifsubinst = E::front_port_to_ifsubinst;
}

} // namespace common
} // namespace cvn_np

#endif // CVN_NP_COMMON_SLOTS_H
