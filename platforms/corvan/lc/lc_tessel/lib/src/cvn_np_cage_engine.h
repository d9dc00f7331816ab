// cvn_np_cage_engine.h - the operations of the cage card families.
//
// A cage card has optical-module cages on one subslot, `cage_per_complex`
// cages per NP; a cage holds one module whose type the platform reports
// (100GE: one port, 40GE: two, 10GE: ten).  Front ports are 8 bits: the cage
// in bits 7..4, the port within the cage in bits 3..0.  Every cage family
// runs the same 46 operations over its own tables; a family file describes
// its tables, its texts and its few differences in one `cage::family`
// record, and engine<family> provides the slot functions.
//
// Every inner step follows the selected operation table: it calls the
// family's own operation directly while the table still holds it, else the
// public function, so a caller who replaced a slot is obeyed.  The two
// calls that never look at the table are slot 13's per-cage count and slot
// 45's cage decode.
#ifndef CVN_NP_CAGE_ENGINE_H
#define CVN_NP_CAGE_ENGINE_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <type_traits>

#include "cvn_np_common_slots.h"
#include "cvn_np_lib.h"
#include "cvn_np_platform.h"
#include "cvn_np_report.h"
#include "cvn_np_table_rows.h"

namespace cvn_np::cage {

namespace common = cvn_np::common;

// ---- Wiring rules, from which the families' tables are generated --------

using common::holds;
using common::k_end_entry;
using common::same_entry;

enum speed : uint8_t { k_100ge, k_40ge, k_10ge, k_speeds };

// What np_info says of each speed, the port type of its ports, and the
// NP-local port of port 0 of an NP's first cage and of its other cages.
struct speed_facts {
    uint16_t np_info::*port_subslot; // bound of a faceplate index
    uint16_t np_info::*port_cage;    // ports of one cage
    uint32_t port_type;
    uint16_t first_cage_np_port, other_cage_np_port;
};
inline constexpr speed_facts k_speed_facts[k_speeds] = {
    {&np_info::port_subslot_100g, &np_info::port_cage_100g, CVN_NP_PORT_TYPE_100GE, 117, 116},
    {&np_info::port_subslot_40g, &np_info::port_cage_40g, CVN_NP_PORT_TYPE_40GE, 99, 96},
    {&np_info::port_subslot_10g, &np_info::port_cage_10g, CVN_NP_PORT_TYPE_10GE, 204, 192},
};

// The ports of one speed on a card with np_info `card`: cage c, port p sits
// at entry c * ports_per_cage + p of `table` (its faceplate index), with
// front port = faceplate port = 16c + p and NP c / cage_per_complex.
// `listed`: the NP-local ports follow no rule, so the table is written out.
struct wiring {
    const np_info &card;
    speed k{};
    const port_mapping_entry *table{};
    bool listed = false;

    constexpr uint32_t per_cage() const { return card.*k_speed_facts[k].port_cage; }
    constexpr uint32_t ports() const { return card.num_cage * per_cage(); }

    // Entry i of the mapping table; entry ports() is the end entry.
    constexpr port_mapping_entry entry(std::size_t i) const
    {
        if (i >= ports())
            return k_end_entry;
        const speed_facts &s = k_speed_facts[k];
        const auto cage = static_cast<uint16_t>(i / per_cage());
        const auto port = static_cast<uint16_t>(i % per_cage());
        const auto front = static_cast<uint16_t>(16 * cage + port);
        const bool first = cage % card.cage_per_complex == 0;
        const uint16_t base = first ? s.first_cage_np_port : s.other_cage_np_port;
        return {front, static_cast<uint16_t>(cage / card.cage_per_complex),
                static_cast<uint16_t>(base + port), front, s.port_type};
    }

    // Element f of the faceplate-index table: the faceplate index of front
    // port f, or CVN_NP_NO_PORT where f has no port of this speed.
    constexpr int32_t fplate_index(std::size_t f) const
    {
        const auto cage = static_cast<uint32_t>(f >> 4);
        const auto port = static_cast<uint32_t>(f & 0x0F);
        if (cage >= card.num_cage || port >= per_cage())
            return CVN_NP_NO_PORT;
        return static_cast<int32_t>(cage * per_cage() + port);
    }

    // Element i of an index map: entry i of the table, NULL from its end on.
    constexpr const port_mapping_entry *in_order(std::size_t i) const
    {
        return i < ports() ? table + i : nullptr;
    }
};

// Not constexpr: a table row that breaks its rule stops the build.
inline void breaks_rule() {}

// The types of an exported index map and of a current-record pointer.
using map_row = const port_mapping_entry *;
using current_map = const port_mapping_entry *const *;

// The port-info lists: their end row, and the lists of no ports and of the
// COMBO ports of a card with `cages` cages.
inline constexpr port_info k_list_end = {0, CVN_NP_PORT_TYPE_END};
inline constexpr port_info k_no_ports[2] = {{0, CVN_NP_PORT_TYPE_NONE}, k_list_end};
template <uint16_t cages>
inline constexpr port_info k_combo_list[2] = {{cages, CVN_NP_PORT_TYPE_COMBO}, k_list_end};

// The np_info of a cage card: one NP per complex, one subslot; the
// faceplate bounds count `faceplate_cages` cages.  Families write it as
// {NPs, cages, faceplate cages, max_port_cage, ports per cage of 100GE,
// 40GE, 40GE_ALT and 10GE modules}.
struct card_shape {
    uint16_t nps, cages, faceplate_cages, max_port_cage;
    uint16_t per_cage_100g, per_cage_40g, per_cage_40g_alt, per_cage_10g;
};
constexpr np_info info_of(card_shape c)
{
    const auto bound = [&](uint16_t per_cage) {
        return static_cast<uint16_t>(c.faceplate_cages * per_cage);
    };
    const uint16_t cages_per_np = c.cages / c.nps;
    // clang-format off
    return {1, 0, c.nps, c.nps, 1, c.cages, cages_per_np, 5, 99, 9216,
            bound(c.per_cage_100g), bound(c.per_cage_40g), bound(c.per_cage_10g), 1, c.max_port_cage,
            bound(c.per_cage_100g), bound(c.per_cage_40g), bound(c.per_cage_10g),
            c.per_cage_100g, c.per_cage_40g, c.per_cage_40g_alt, c.per_cage_10g, 0};
    // clang-format on
}

// ---- Family description ------------------------------------------------

// One speed of a family: the tables its init installs, the current-record
// pointers it installs them in, and what the operations need beside them.
// Built from the speed's wiring, it checks every row of those tables against
// it (a listed NP-local port excepted) and takes each size from the array.
struct speed_tables {
    current_map phys_map{}, fplate_map{}, np_port_map{};
    current_map *card_phys_map{}, *card_fplate_map{}, *card_np_port_map{};
    const int32_t *fplate_index{}; // by front port; NULL: the family has no such speed
    uint32_t fplate_index_size{};
    check index_bound{}; // "index < <family>_card_np_info->port_subslot_<speed>"

    constexpr speed_tables() = default;
    template <std::size_t n_phys, std::size_t n_fplate, std::size_t n_np_port, std::size_t n>
    constexpr speed_tables(const wiring &w, const map_row (&phys)[n_phys],
                           const map_row (&fplate)[n_fplate], const map_row (&np_port)[n_np_port],
                           current_map *card_phys, current_map *card_fplate,
                           current_map *card_np_port, const int32_t (&index)[n], check bound)
        : phys_map(phys), fplate_map(fplate), np_port_map(np_port), card_phys_map(card_phys),
          card_fplate_map(card_fplate), card_np_port_map(card_np_port), fplate_index(index),
          fplate_index_size(n), index_bound(bound)
    {
        for (uint32_t i = 0; i <= w.ports(); ++i) {
            port_mapping_entry rule = w.entry(i);
            rule.np_port = w.listed && i < w.ports() ? w.table[i].np_port : rule.np_port;
            if (!same_entry(w.table[i], rule))
                breaks_rule();
        }
        const auto equal = [](auto a, auto b) { return a == b; };
        const auto in_order = [&w](std::size_t i) { return w.in_order(i); };
        const auto index_of = [&w](std::size_t f) { return w.fplate_index(f); };
        if (!common::rows_follow(phys, in_order, equal) ||
            !common::rows_follow(fplate, in_order, equal) ||
            !common::rows_follow(np_port, in_order, equal) ||
            !common::rows_follow(index, index_of, equal))
            breaks_rule();
    }
};

// An interface-subsystem type the family knows: its speed and the ports one
// cage of it carries.
struct ifsub_type {
    uint32_t code;
    speed tables;
    uint16_t np_info::*ports_per_cage;
};

// The module types of the three-speed cage cards, in the order the families
// list them; a family that does not know 40GE_ALT takes the first three.
inline constexpr ifsub_type k_module_types[] = {
    {CVN_NP_IFSUB_TYPE_100GE, k_100ge, &np_info::port_cage_100g},
    {CVN_NP_IFSUB_TYPE_40GE, k_40ge, &np_info::port_cage_40g},
    {CVN_NP_IFSUB_TYPE_10GE, k_10ge, &np_info::port_cage_10g},
    {CVN_NP_IFSUB_TYPE_40GE_ALT, k_40ge, &np_info::port_cage_40g_alt},
};

// The family's condition texts, one per distinct condition.
struct texts {
    check subslot;          // slots 6, 7
    check ifsubinst;        // slot 7
    check cage_id;          // slot 37
    check subslot_num;      // slots 38, 40
    check ifsubsys_num;     // slots 38, 39, 43
    check np_num;           // slots 40, 41
    check np_id;            // slots 13, 16, 18
    check np_complex;       // slots 23, 24, 25
    check front_needed;     // slot 16
    check port_type_needed; // slot 18
    check fplate_needed;    // slot 18
    check unknown;          // "0": a type or port type the family does not know
};

// What slot 4 answers.
enum class slot4_answer : uint8_t {
    first_populated_cage, // the list of the first cage holding a module
    cage_list,            // the COMBO list, without asking the platform
    first_type,           // the list of the family's first ifsub type
};

// The np_info and port-info array a card of the family runs on.
struct card_tables {
    const np_info *np_info_table;
    const port_info *const *port_info_table;
};

// Slot 15's type of an NP-local port on the three-speed cards, from its
// range (defined with the operations).
constexpr uint32_t np_port_ifsub_type_by_range(uint32_t np_port);

struct family {
    const char *path{}; // the family's source, for the assertion report
    texts text{};

    // Tables the init installs (those the compile-time answers are built
    // for), and the current-record pointers.
    card_tables tables{};
    card_tables (*tables_for_card)() = nullptr; // when set, chooses the tables by card type
    const np_info **card_np_info{};
    const port_info *const **card_port_info{};
    card_version *card_version_record{};
    subslot_info *card_subslot_info{};
    const port_info *dummy_port_info{};
    speed_tables speeds[k_speeds]{};
    const ifsub_type *types = k_module_types;
    std::size_t type_count = std::size(k_module_types);

    // The family's differences.
    slot4_answer port_info_answer{};
    bool local_ports_per_np = false;         // slot 40 counts an NP's cages, not one cage
    bool query_status_returned = true;       // slots 11, 12, 16, 18 return a failed query
    bool failed_query_skips_mapping = false; // slots 8-10 answer 0 on a failed query
    uint32_t max_np_port = UINT32_MAX;       // slot 15 rejects a larger NP-local port
    uint32_t ifsubinst_cages{};              // slot 45's cage bound; 0: slot left empty
    uint32_t (*np_port_ifsub_type)(uint32_t) = np_port_ifsub_type_by_range; // slot 15's type
};

// ---- The operations ------------------------------------------------------

template <const family &F> struct engine {
    enum output : uint8_t { out_np, out_np_port, out_fplate, out_port_type, out_front };

    static const np_info &info() { return **F.card_np_info; }
    static void require(bool ok, const check &c) { cvn_np::require(ok, F.path, c); }

    // The place of a type code in the family's list; type_count for none.
    // (An index, not a pointer: with null-pointer checks kept, as under the
    // sanitizers, a pointer into an inline table is no constant to compare.)
    static constexpr std::size_t type_place(uint32_t code)
    {
        std::size_t i = 0;
        while (i < F.type_count && F.types[i].code != code)
            ++i;
        return i;
    }
    static constexpr const ifsub_type *find_type(uint32_t code)
    {
        const std::size_t i = type_place(code);
        return i < F.type_count ? &F.types[i] : nullptr;
    }
    static const ifsub_type &known_type(uint32_t code)
    {
        const ifsub_type *t = find_type(code);
        require(t != nullptr, F.text.unknown);
        return *t;
    }
    static constexpr const speed_facts &facts(const speed_tables &s)
    {
        return k_speed_facts[&s - F.speeds];
    }
    // The speed whose ports carry a port-type code, if the family has it.
    static constexpr const speed_tables *speed_of_port_type(uint32_t port_type)
    {
        for (const speed_tables &s : F.speeds)
            if (s.fplate_index != nullptr && facts(s).port_type == port_type)
                return &s;
        return nullptr;
    }
    // fn(k) with speed k as a compile-time constant, so that the tables of
    // F.speeds[k] fold into the code; a speed the family lacks is skipped.
    template <class Fn> static void at_speed(speed k, Fn fn)
    {
        const auto run = [&](auto c) {
            if constexpr (F.speeds[c].fplate_index != nullptr)
                fn(c);
        };
        if (k == k_100ge)
            run(std::integral_constant<speed, k_100ge>{});
        else if (k == k_40ge)
            run(std::integral_constant<speed, k_40ge>{});
        else
            run(std::integral_constant<speed, k_10ge>{});
    }
    static const port_info *speed_list(const speed_tables &s)
    {
        return (*F.card_port_info)[facts(s).port_type];
    }
    // Entries of one NP at a speed: the stride of the NP-local map.
    static uint32_t np_block(const speed_tables &s)
    {
        return uint32_t{info().*facts(s).port_cage} * info().cage_per_complex;
    }
    // The faceplate index of `key` at speed s, checked against the speed's
    // bound; a key past the table counts as CVN_NP_NO_PORT.
    static uint32_t checked_fplate_index(const speed_tables &s, uint32_t key)
    {
        const int32_t index = key < s.fplate_index_size ? s.fplate_index[key] : CVN_NP_NO_PORT;
        require(index >= 0 && index < int32_t{info().*facts(s).port_subslot}, s.index_bound);
        return static_cast<uint32_t>(index);
    }

    static constexpr auto put = common::put<uint32_t>;

    // Slot `slot` of the selected table on `args`: `own` directly while the
    // table holds it, else the public function.
    template <auto slot, auto own, class... A> static auto step(A... args)
    {
        return common::through_table<slot, own>(args...);
    }
    static uint32_t np_count() { return step<&cvn_np_api::cvn_np_how_many, how_many>(); }

    // What the platform reports in the cage of a front port (slot 37).  The
    // type stays NONE (and subslot and cage 0) when the query fails.
    using cage_answer = common::place_answer;
    static cage_answer query(uint32_t front)
    {
        return common::query_front_port<front_port_to_ifsubsys>(front);
    }
    // Slot 37 on port 0 of cage `cage` of a subslot (encoded by slot 30).
    static cage_answer query_cage(uint32_t subslot, uint32_t cage)
    {
        return common::query_place<set_subslot_ifsubinst_ifsubinst_port, front_port_to_ifsubsys>(
            subslot, cage);
    }
    // Slots 33, 35, 38, 39 and 43 as inner steps.
    static uint32_t port_of(uint32_t front)
    {
        return step<&cvn_np_api::cvn_np_lib_get_port, get_port>(front);
    }
    static const port_info *list_of(uint32_t subslot, uint32_t cage, uint32_t type)
    {
        return step<&cvn_np_api::aux_cvn_np_port_info_get, port_info_of_type>(subslot, cage, type);
    }
    static void front_mapping(uint32_t cage, uint32_t front, uint32_t type, uint32_t *np,
                              uint32_t *np_port, uint32_t *fplate_port, uint32_t *port_type)
    {
        step<&cvn_np_api::aux_cvn_np_front_port_to_mapping_info, front_port_to_mapping_info>(
            cage, port_of(front), type, np, np_port, fplate_port, port_type);
    }
    [[gnu::noinline]] static void fplate_mapping(uint32_t fplate, uint32_t port_type, uint32_t *np,
                                                 uint32_t *np_port, uint32_t *front)
    {
        const uint32_t cage = step<&cvn_np_api::cvn_np_lib_get_ifsubinst, get_ifsubinst>(fplate);
        step<&cvn_np_api::aux_cvn_faceplate_to_mapping_info, faceplate_to_mapping_info>(
            cage, port_of(fplate), port_type, np, np_port, front);
    }

    // The cages of NP n: `cage_per_complex` of them from its first cage.
    struct np_cages {
        uint32_t subslot;
        uint32_t first;
        uint32_t count;
    };
    static np_cages cages_of(uint32_t np_id)
    {
        return by_shape([np_id](const np_info &i) -> np_cages {
            return {np_id / (i.num_complex / i.num_subslot), (i.num_cage / i.num_complex) * np_id,
                    i.cage_per_complex};
        });
    }
    // fn(the card's np_info): the installed one as a compile-time constant,
    // so that its divisions fold.
    template <class Fn> static auto by_shape(Fn fn)
    {
        return installed_info() ? fn(k_info) : fn(info());
    }

    // ---- Answers known at compile time ----
    //
    // While the library is initialised, the selected table holds the
    // family's own operation for every step of a lookup and the current
    // records still point at the tables init installs, slots 14, 15, 19,
    // 22 and 39 read what those steps would find from a table built at
    // compile time; a replaced slot or record, or a value one of the steps
    // would reject, takes the steps themselves.
    //
    // A cell holds the answer itself: the fields of the entry the steps
    // would find, or how they end without one.  Eight bytes: one load, and
    // its index a shift.
    enum class reach : uint8_t { entry, none, invalid, steps };
    struct alignas(8) answer_cell {
        reach how = reach::steps;
        uint8_t speed = 0; // whose map holds the entry
        uint8_t np = 0, np_port = 0, front = 0, fplate_port = 0, port_type = 0;
    };
    template <std::size_t keys> struct answer_cells {
        answer_cell at[keys][256];
    };
    // The cell of row `row` of speed s's map `map`.
    static constexpr answer_cell cell_of_entry(const speed_tables &s,
                                               current_map speed_tables::*map, uint32_t row)
    {
        const port_mapping_entry *e = (s.*map)[row];
        const auto byte = [](uint32_t v) { return static_cast<uint8_t>(v); };
        if (e == nullptr ||
            (e->np | e->np_port | e->phys_front_port | e->fplate_port | e->port_type) > 0xFF)
            return {};
        return {reach::entry,      byte(&s - F.speeds),      byte(e->np),
                byte(e->np_port),  byte(e->phys_front_port), byte(e->fplate_port),
                byte(e->port_type)};
    }
    // `c` while it names an entry of a map that its speed's record `card`
    // still points at; else a cell that takes the steps.
    template <current_map *speed_tables::*card, current_map speed_tables::*map>
    static answer_cell installed_entry(answer_cell c)
    {
        static constexpr current_map *cards[k_speeds] = {F.speeds[0].*card, F.speeds[1].*card,
                                                         F.speeds[2].*card};
        static constexpr current_map maps[k_speeds] = {F.speeds[0].*map, F.speeds[1].*map,
                                                       F.speeds[2].*map};
        return c.how == reach::entry && *cards[c.speed] == maps[c.speed] ? c : answer_cell{};
    }
    static constexpr const np_info &k_info = *F.tables.np_info_table;

    // The speed of a type code the family knows, else NULL.
    static constexpr const speed_tables *speed_of_code(uint32_t code)
    {
        const std::size_t i = type_place(code);
        return i < F.type_count ? &F.speeds[F.types[i].tables] : nullptr;
    }
    // Slot 15: (NP, NP-local port) -> the row slots 41 and 44 find in the
    // NP's block of the NP-local map of the speed of the port's type.
    static constexpr uint32_t k_nps = k_info.num_complex;
    static constexpr uint32_t row_of_np_port(const speed_tables &s, uint32_t np, uint32_t p)
    {
        const uint32_t block = uint32_t{k_info.*facts(s).port_cage} * k_info.cage_per_complex;
        for (uint32_t row = np * block; row < np * block + block; ++row)
            if (s.np_port_map[row] != nullptr && s.np_port_map[row]->np_port == p)
                return row;
        return UINT32_MAX;
    }
    // Row k_nps: an NP past the card's, which slot 15 answers invalid.
    static constexpr answer_cells<k_nps + 1> np_port_cells()
    {
        answer_cells<k_nps + 1> a{};
        for (uint32_t np = 0; np <= k_nps; ++np) {
            for (uint32_t p = 0; p < 256; ++p) {
                const speed_tables *s = speed_of_code(F.np_port_ifsub_type(p));
                const uint32_t row = s != nullptr && s->fplate_index != nullptr && np < k_nps
                                         ? row_of_np_port(*s, np, p)
                                         : UINT32_MAX;
                a.at[np][p] = np == k_nps || p > F.max_np_port ? answer_cell{reach::invalid}
                              : s == nullptr                   ? answer_cell{reach::steps}
                              : row == UINT32_MAX
                                  ? answer_cell{reach::none}
                                  : cell_of_entry(*s, &speed_tables::np_port_map, row);
            }
        }
        return a;
    }
    static constexpr answer_cells<k_nps + 1> k_np_port_cells = np_port_cells();

    // The row of port `key` in the speed's faceplate-index table, or -1
    // where the index check would fail.
    static constexpr int32_t checked_row(const speed_tables &s, uint32_t key)
    {
        const int32_t index = key < s.fplate_index_size ? s.fplate_index[key] : CVN_NP_NO_PORT;
        return index >= 0 && index < int32_t{k_info.*facts(s).port_subslot} ? index : -1;
    }
    // Slots 19 and 22: (port type, faceplate port) -> the entry of the
    // faceplate map of the port type's speed that slot 43 finds.
    static constexpr answer_cells<CVN_NP_PORT_TYPE_100GE + 1> fplate_cells()
    {
        answer_cells<CVN_NP_PORT_TYPE_100GE + 1> a{};
        for (uint32_t type = 0; type <= CVN_NP_PORT_TYPE_100GE; ++type) {
            const speed_tables *s = speed_of_port_type(type);
            for (uint32_t f = 0; f < 256 && s != nullptr; ++f) {
                const int32_t row =
                    common::get_ifsubinst(f) < k_info.num_cage ? checked_row(*s, f) : -1;
                if (row >= 0)
                    a.at[type][f] = cell_of_entry(*s, &speed_tables::fplate_map, row);
            }
        }
        return a;
    }
    static constexpr answer_cells<CVN_NP_PORT_TYPE_100GE + 1> k_fplate_cells = fplate_cells();

    // Slot 39: (type code - k_first_code, port) -> the entry of the phys-
    // front-port map of the type's speed.
    static constexpr answer_cells<8> phys_cells()
    {
        answer_cells<8> a{};
        for (uint32_t c = 0; c < 8; ++c) {
            const speed_tables *s = speed_of_code(k_first_code + c);
            for (uint32_t port = 0; port < 256 && s != nullptr && s->fplate_index != nullptr;
                 ++port) {
                const int32_t row = checked_row(*s, port);
                if (row >= 0)
                    a.at[c][port] = cell_of_entry(*s, &speed_tables::phys_map, row);
            }
        }
        return a;
    }
    static constexpr answer_cells<8> k_phys_cells = phys_cells();

    // The current np_info is the one the compile-time answers were built on.
    static bool installed_info() { return *F.card_np_info == &k_info; }

    // ---- slots 0-7: card summary ----

    using summary = common::card_summary<F>;
    static constexpr auto version_get = summary::version_get;
    static constexpr auto max_mtu = summary::max_mtu;
    static constexpr auto how_many = summary::how_many;
    static constexpr auto chip_how_many = summary::chip_how_many;
    static constexpr auto subslot_info_get = summary::subslot_info_get;

    static const port_info *port_info_get()
    {
        if (F.port_info_answer == slot4_answer::cage_list)
            return (*F.card_port_info)[CVN_NP_PORT_TYPE_COMBO];
        if (F.port_info_answer == slot4_answer::first_type)
            return list_of(0, 0, F.types[0].code);
        const cage_answer last = by_shape([](const np_info &i) {
            cage_answer a{0, 0, 0, CVN_NP_IFSUB_TYPE_NONE};
            for (uint32_t subslot = 0; subslot < i.num_subslot; ++subslot) {
                for (uint32_t cage = 0; cage < i.num_cage / i.num_subslot; ++cage) {
                    a = query_cage(subslot, cage);
                    if (a.type != CVN_NP_IFSUB_TYPE_NONE)
                        break;
                }
            }
            return a;
        });
        return list_of(last.subslot, last.ifsubsys, last.type);
    }

    static const port_info *port_info_subslot(uint16_t subslot)
    {
        require(subslot < info().num_subslot, F.text.subslot);
        return (*F.card_port_info)[CVN_NP_PORT_TYPE_COMBO];
    }

    static const port_info *port_info_from_subslot_ifsubinst(uint16_t subslot, uint16_t ifsubinst)
    {
        require(subslot < info().num_subslot, F.text.subslot);
        require(ifsubinst < info().num_cage, F.text.ifsubinst);
        const cage_answer a = query_cage(subslot, ifsubinst);
        return list_of(subslot, ifsubinst, a.type);
    }

    // ---- slots 8-12: front port to NP ----

    // Slots 8-10: one field of the front port's mapping (0 when none is
    // written).
    template <output field> static uint32_t front_port_field(uint32_t front)
    {
        const cage_answer a = query(front);
        uint32_t value = 0;
        if (a.status != 0 && F.failed_query_skips_mapping)
            return value;
        front_mapping(a.ifsubsys, front, a.type, field == out_np ? &value : nullptr,
                      field == out_np_port ? &value : nullptr, nullptr,
                      field == out_port_type ? &value : nullptr);
        return value;
    }

    static uint32_t front_port_to_face_plate_port(uint32_t front, uint32_t *fplate_port,
                                                  uint32_t *port_type)
    {
        if (fplate_port == nullptr || port_type == nullptr)
            return CVN_NP_ERR_INVALID;
        const cage_answer a = query(front);
        if (a.status != 0 && F.query_status_returned)
            return a.status;
        uint32_t fplate = 0;
        uint32_t type = 0;
        front_mapping(a.ifsubsys, front, a.type, nullptr, nullptr, &fplate, &type);
        *fplate_port = fplate;
        *port_type = type;
        return 0;
    }

    static uint32_t front_port_mapping_info(uint32_t front, uint32_t *np, uint32_t *np_port,
                                            uint32_t *fplate_port, uint32_t *port_type)
    {
        const cage_answer a = query(front);
        if (a.status != 0 && F.query_status_returned)
            return a.status;
        front_mapping(a.ifsubsys, front, a.type, np, np_port, fplate_port, port_type);
        return 0;
    }

    // ---- slots 13-18: NP to front port ----

    static uint32_t info_num_local_ports(uint32_t np_id)
    {
        require(np_id < np_count(), F.text.np_id);
        const np_cages cages = cages_of(np_id);
        uint32_t ports = 0;
        for (uint32_t cage = cages.first; cage < cages.first + cages.count; ++cage) {
            const cage_answer a = query_cage(cages.subslot, cage);
            if (a.type != CVN_NP_IFSUB_TYPE_NONE)
                ports += ports_of_one_cage(a.subslot, np_id, a.type);
        }
        return ports;
    }

    static uint32_t info_to_front_port(uint32_t np_id, uint32_t np_port, uint32_t *front)
    {
        uint32_t status = 0;
        if (np_port_answer<true>(np_id, np_port, front, nullptr, status)) [[likely]]
            return status;
        return info_to_front_port_by_steps(np_id, np_port, front);
    }
    [[gnu::noinline]] static uint32_t info_to_front_port_by_steps(uint32_t np_id, uint32_t np_port,
                                                                  uint32_t *front)
    {
        uint32_t discarded_type = 0;
        return step<&cvn_np_api::cvn_np_info_to_fplate_porttype, info_to_fplate_porttype>(
            np_id, np_port, front, &discarded_type);
    }

    // Slot 15's answer from the compile-time table, when it may be read
    // (false: take the steps); slot 14 also steps through slot 15.
    template <bool from_slot14> static bool np_port_answer(uint32_t np_id, uint32_t np_port,
                                                           uint32_t *fplate_port,
                                                           uint32_t *port_type, uint32_t &status)
    {
        if (!installed_info() || !holds<&cvn_np_api::cvn_np_how_many, how_many>() ||
            !holds<&cvn_np_api::aux_cvn_np_info_to_mapping_info, info_to_mapping_info>() ||
            !holds<&cvn_np_api::aux_np_port_to_mapping_info, np_port_to_mapping_info>() ||
            (from_slot14 &&
             !holds<&cvn_np_api::cvn_np_info_to_fplate_porttype, info_to_fplate_porttype>()) ||
            np_port > 0xFF) [[unlikely]]
            return false;
        const answer_cell c = k_np_port_cells.at[np_id < k_nps ? np_id : k_nps][np_port];
        status = c.how == reach::invalid ? CVN_NP_ERR_INVALID : 0;
        if (c.how != reach::entry)
            return c.how != reach::steps;
        if (installed_entry<&speed_tables::card_np_port_map, &speed_tables::np_port_map>(c).how !=
            reach::entry) [[unlikely]]
            return false;
        put(fplate_port, c.front);
        put(port_type, c.port_type);
        return true;
    }

    static uint32_t info_to_fplate_porttype(uint32_t np_id, uint32_t np_port, uint32_t *fplate_port,
                                            uint32_t *port_type)
    {
        uint32_t status = 0;
        if (np_port_answer<false>(np_id, np_port, fplate_port, port_type, status)) [[likely]]
            return status;
        return info_to_fplate_porttype_by_steps(np_id, np_port, fplate_port, port_type);
    }
    [[gnu::noinline]] static uint32_t info_to_fplate_porttype_by_steps(uint32_t np_id,
                                                                       uint32_t np_port,
                                                                       uint32_t *fplate_port,
                                                                       uint32_t *port_type)
    {
        if (np_id >= np_count() || np_port > F.max_np_port)
            return CVN_NP_ERR_INVALID;
        step<&cvn_np_api::aux_cvn_np_info_to_mapping_info, info_to_mapping_info>(
            np_id, np_port, F.np_port_ifsub_type(np_port), fplate_port, nullptr, port_type);
        return 0;
    }

    // Slots 16 and 18: the first entry of the NP at the type of the first
    // of its cages that holds a module.
    static uint32_t first_port_of_np(uint32_t np_id, uint32_t *front, uint32_t *fplate_port,
                                     uint32_t *port_type)
    {
        const np_cages cages = cages_of(np_id);
        cage_answer found{0, 0, 0, CVN_NP_IFSUB_TYPE_NONE};
        for (uint32_t cage = cages.first; cage < cages.first + cages.count; ++cage) {
            found = query_cage(cages.subslot, cage);
            if (found.status != 0 && F.query_status_returned)
                return found.status;
            if (found.type != CVN_NP_IFSUB_TYPE_NONE)
                break;
        }
        const uint32_t status = step<&cvn_np_api::aux_cvn_np_first_port_on_np, first_port_on_np>(
            np_id, found.ifsubsys, found.type, front, fplate_port, port_type);
        return F.query_status_returned ? status : 0;
    }

    static uint32_t first_front_port_on_np(uint32_t np_id, uint32_t *phys_front_port)
    {
        require(phys_front_port != nullptr, F.text.front_needed);
        require(np_id < np_count(), F.text.np_id);
        return first_port_of_np(np_id, phys_front_port, nullptr, nullptr);
    }

    static uint32_t first_phys_port_on_np(uint32_t, uint32_t *) { return CVN_NP_ERR_INVALID; }

    static uint32_t first_fplate_porttype_on_np(uint32_t np_id, uint32_t *port_type,
                                                uint32_t *fplate_port)
    {
        require(port_type != nullptr, F.text.port_type_needed);
        require(fplate_port != nullptr, F.text.fplate_needed);
        require(np_id < np_count(), F.text.np_id);
        return first_port_of_np(np_id, nullptr, fplate_port, port_type);
    }

    // ---- slots 19-22: faceplate port to NP ----

    // What the steps of slots 19 and 22 would find for a faceplate port,
    // from the compile-time table.
    static answer_cell fplate_cell_now(uint32_t fplate, uint32_t port_type)
    {
        if (!installed_info() || !holds<&cvn_np_api::cvn_np_lib_get_ifsubinst, get_ifsubinst>() ||
            !holds<&cvn_np_api::cvn_np_lib_get_port, get_port>() ||
            !holds<&cvn_np_api::aux_cvn_faceplate_to_mapping_info, faceplate_to_mapping_info>() ||
            port_type > CVN_NP_PORT_TYPE_100GE || fplate > 0xFF) [[unlikely]]
            return {};
        return installed_entry<&speed_tables::card_fplate_map, &speed_tables::fplate_map>(
            k_fplate_cells.at[port_type][fplate]);
    }
    template <output field> static uint32_t faceplate_field(uint32_t port_type, uint32_t fplate)
    {
        if (const answer_cell c = fplate_cell_now(fplate, port_type); c.how == reach::entry)
            [[likely]]
            return field == out_np ? c.np : field == out_np_port ? c.np_port : c.front;
        uint32_t value = 0;
        fplate_mapping(fplate, port_type, field == out_np ? &value : nullptr,
                       field == out_np_port ? &value : nullptr,
                       field == out_front ? &value : nullptr);
        return value;
    }

    static uint32_t faceplate_porttype_mapping_info(uint32_t port_type, uint32_t fplate,
                                                    uint32_t *np, uint32_t *np_port,
                                                    uint32_t *front)
    {
        if (const answer_cell c = fplate_cell_now(fplate, port_type); c.how == reach::entry)
            [[likely]] {
            put(np, c.np);
            put(np_port, c.np_port);
            put(front, c.front);
            return 0;
        }
        fplate_mapping(fplate, port_type, np, np_port, front);
        return 0;
    }

    // ---- slots 23-28: complexes and subslots ----

    static uint32_t complex_to_subslot(uint8_t np_complex)
    {
        require(np_complex < np_count(), F.text.np_complex);
        return 0;
    }

    static uint32_t complex_to_subslot_list(uint8_t np_complex, uint32_t *count,
                                            uint32_t *first_subslot)
    {
        require(np_complex < np_count(), F.text.np_complex);
        return common::one_subslot_of_complex(np_complex, count, first_subslot);
    }

    static constexpr auto complex_to_np = summary::complex_to_np;

    static constexpr auto subslot_to_np_list = common::subslot_to_np_list;

    // ---- slots 29-36: front-port encoding ----

    static constexpr auto set_subslot_phy_port = common::set_subslot_phy_port;
    static constexpr auto set_subslot_ifsubinst_ifsubinst_port =
        common::set_subslot_ifsubinst_ifsubinst_port;
    static constexpr auto get_subslot = common::get_subslot;
    static constexpr auto get_port = common::get_port;
    static constexpr auto get_subslot_port = common::get_port; // the port is the whole front port
    static constexpr auto get_ifsubinst = common::get_ifsubinst;
    static constexpr auto get_ifsubinst_port = common::get_ifsubinst_port;

    // A port of a 10GE or 40GE module is (cage << 4) + port, unmasked; a
    // 100GE module has port 0 only.
    static uint32_t get_phys_port_tuple45(uint32_t port_type, uint16_t, uint16_t ifsubinst,
                                          uint16_t ifsubinst_port)
    {
        const speed_tables *s = speed_of_port_type(port_type);
        if (s == nullptr)
            return CVN_NP_NO_PORT;
        if (port_type == CVN_NP_PORT_TYPE_100GE)
            return uint32_t{ifsubinst} << 4;
        return (uint32_t{ifsubinst} << 4) + ifsubinst_port;
    }

    // ---- slots 37-45: auxiliary layer ----

    static uint32_t front_port_to_ifsubsys(uint32_t front, uint32_t *subslot, uint32_t *ifsubsys,
                                           uint32_t *type)
    {
        const ifsubsys_id cage_id = common::place_of(front);
        require(cage_id.ifsubsys < info().num_cage, F.text.cage_id);
        return common::ask_platform(cage_id, cage_id.subslot, subslot, ifsubsys, type);
    }

    // The port type whose list slot 38 answers for each type code the
    // family knows, by code - k_first_code (0xFF: unknown).
    static constexpr uint32_t k_first_code = [] {
        uint32_t first = UINT32_MAX;
        for (std::size_t t = 0; t < F.type_count; ++t)
            first = F.types[t].code < first ? F.types[t].code : first;
        return first;
    }();
    static constexpr auto k_list_of_code = [] {
        std::array<uint8_t, 8> list{};
        list.fill(0xFF);
        for (std::size_t t = 0; t < F.type_count; ++t)
            list.at(F.types[t].code - k_first_code) =
                static_cast<uint8_t>(k_speed_facts[F.types[t].tables].port_type);
        return list;
    }();

    static const port_info *port_info_of_type(uint32_t subslot_num, uint32_t ifsubsys_num,
                                              uint32_t type)
    {
        require(subslot_num < info().num_subslot, F.text.subslot_num);
        require(ifsubsys_num < info().num_cage, F.text.ifsubsys_num);
        const uint32_t code = type - k_first_code;
        const uint8_t list = code < k_list_of_code.size() ? k_list_of_code[code] : 0xFF;
        return list != 0xFF ? (*F.card_port_info)[list] : F.dummy_port_info;
    }

    // 100GE modules index the faceplate-index table with the port value
    // itself, the others with its low 8 bits.
    static void front_port_to_mapping_info(uint32_t ifsubsys_num, uint32_t port, uint32_t type,
                                           uint32_t *np, uint32_t *np_port, uint32_t *fplate_port,
                                           uint32_t *port_type)
    {
        const auto put_fields = [&](const auto &e) {
            put(np, e.np);
            put(np_port, e.np_port);
            put(fplate_port, e.fplate_port);
            put(port_type, e.port_type);
        };
        if (const answer_cell c = phys_cell_now(ifsubsys_num, port, type); c.how == reach::entry)
            [[likely]]
            return put_fields(c);
        if (const port_mapping_entry *e = phys_entry_by_steps(ifsubsys_num, port, type))
            put_fields(*e); // none: a speed the family's cards never carry
    }
    // What slot 39 would read, from the compile-time table.
    static answer_cell phys_cell_now(uint32_t ifsubsys_num, uint32_t port, uint32_t type)
    {
        const uint32_t code = type - k_first_code;
        if (!installed_info() || ifsubsys_num >= k_info.num_cage || code >= 8 || port > 0xFF)
            [[unlikely]]
            return {};
        return installed_entry<&speed_tables::card_phys_map, &speed_tables::phys_map>(
            k_phys_cells.at[code][port]);
    }
    [[gnu::noinline]] static const port_mapping_entry *
    phys_entry_by_steps(uint32_t ifsubsys_num, uint32_t port, uint32_t type)
    {
        require(ifsubsys_num < info().num_cage, F.text.ifsubsys_num);
        const port_mapping_entry *e = nullptr;
        at_speed(known_type(type).tables, [&](auto k) {
            constexpr const speed_tables &s = F.speeds[k];
            const uint32_t key = k == k_100ge ? port : port & 0xFF;
            e = (*s.card_phys_map)[checked_fplate_index(s, key)];
        });
        return e;
    }

    // The ports one cage of `type` carries (slot 40's checks and count).
    static uint32_t ports_of_one_cage(uint32_t subslot_num, uint32_t np_num, uint32_t type)
    {
        require(subslot_num < info().num_subslot, F.text.subslot_num);
        require(np_num < info().num_complex, F.text.np_num);
        return info().*known_type(type).ports_per_cage;
    }

    static uint32_t aux_num_local_ports(uint32_t subslot_num, uint32_t np_num, uint32_t type)
    {
        const uint32_t per_cage = ports_of_one_cage(subslot_num, np_num, type);
        return F.local_ports_per_np ? per_cage * info().cage_per_complex : per_cage;
    }

    static void info_to_mapping_info(uint32_t np_num, uint32_t np_port, uint32_t type,
                                     uint32_t *front, uint32_t *fplate_port, uint32_t *port_type)
    {
        require(np_num < info().num_complex, F.text.np_num);
        at_speed(known_type(type).tables, [&](auto k) {
            const speed_tables &s = F.speeds[k];
            const uint32_t block = np_block(s);
            step<&cvn_np_api::aux_np_port_to_mapping_info, np_port_to_mapping_info>(
                *s.card_np_port_map + std::size_t{np_num} * block, np_port, block, front,
                fplate_port, port_type);
        });
    }

    static uint32_t first_port_on_np(uint32_t np_num, uint32_t, uint32_t type, uint32_t *front,
                                     uint32_t *fplate_port, uint32_t *port_type)
    {
        const ifsub_type *t = find_type(type);
        if (t == nullptr || np_num >= info().num_complex)
            return CVN_NP_ERR_INVALID;
        at_speed(t->tables, [&](auto k) {
            constexpr const speed_tables &s = F.speeds[k];
            common::put_entry(*(*s.card_np_port_map)[std::size_t{np_num} * np_block(s)], front,
                              fplate_port, port_type);
        });
        return 0;
    }

    static uint32_t faceplate_to_mapping_info(uint32_t ifsubsys_num, uint32_t port,
                                              uint32_t port_type, uint32_t *np, uint32_t *np_port,
                                              uint32_t *front)
    {
        require(ifsubsys_num < info().num_cage, F.text.ifsubsys_num);
        const speed_tables *found = speed_of_port_type(port_type);
        require(found != nullptr, F.text.unknown);
        at_speed(static_cast<speed>(found - F.speeds), [&](auto k) {
            constexpr const speed_tables &s = F.speeds[k];
            const port_mapping_entry &e =
                *(*s.card_fplate_map)[checked_fplate_index(s, port & 0xFF)];
            put(np, e.np);
            put(np_port, e.np_port);
            put(front, e.phys_front_port);
        });
        return 0;
    }

    static constexpr auto np_port_to_mapping_info = common::np_port_to_mapping_info;

    static uint32_t front_port_to_ifsubinst(uint32_t front, uint32_t *ifsubinst)
    {
        if (ifsubinst == nullptr)
            return CVN_NP_EINVAL;
        *ifsubinst = get_ifsubinst(front);
        return *ifsubinst < F.ifsubinst_cages ? 0 : CVN_NP_EINVAL;
    }

    // ---- init and the operation table ----

    static void fill(cvn_np_api *t)
    {
        common::fill_slots<engine>(t);
        if (F.ifsubinst_cages == 0) // fenna leaves slot 45 empty
            t->aux_cvn_np_front_port_to_ifsubinst = nullptr;
    }

    // Points the current-record pointers at the family's tables (np_info
    // and port info, then per speed 100GE, 40GE, 10GE the phys, faceplate
    // and NP-local maps), fills the version and subslot records from the
    // np_info, and fills the operation table.
    static void init(cvn_np_api *table)
    {
        const card_tables chosen = F.tables_for_card != nullptr ? F.tables_for_card() : F.tables;
        *F.card_np_info = chosen.np_info_table;
        *F.card_port_info = chosen.port_info_table;
        for (const speed_tables &s : F.speeds) {
            if (s.card_phys_map == nullptr)
                continue; // a speed the family's cards never carry
            *s.card_phys_map = s.phys_map;
            *s.card_fplate_map = s.fplate_map;
            *s.card_np_port_map = s.np_port_map;
        }
        const np_info &i = info();
        *F.card_version_record = {i.ver_major, i.ver_minor};
        // max_ports_per_subslot: the ports of the widest module, one cage.
        uint16_t widest = 0;
        for (const speed_tables &s : F.speeds)
            if (s.fplate_index != nullptr && i.*facts(s).port_cage > widest)
                widest = i.*facts(s).port_cage;
        *F.card_subslot_info = {i.num_subslot, widest, i.num_cage, 255};
        fill(table);
    }
};

// brisca-style slot 15: an NP-local port's type from its number.
constexpr uint32_t np_port_ifsub_type_by_range(uint32_t np_port)
{
    if (np_port >= 192)
        return CVN_NP_IFSUB_TYPE_10GE;
    if (np_port > 100)
        return CVN_NP_IFSUB_TYPE_100GE;
    return CVN_NP_IFSUB_TYPE_40GE;
}

} // namespace cvn_np::cage

#endif // CVN_NP_CAGE_ENGINE_H
