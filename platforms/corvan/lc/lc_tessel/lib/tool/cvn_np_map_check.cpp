// cvn_np_map_check.cpp - --check: do the library's answers agree with each
// other for a card and what is plugged into it?
//
// Every port that exists is asked both ways (front port to NP and NP port,
// faceplate port to front port, and back), every NP for its local-port
// count and its first front port.  A disagreement the library's own
// defined answers make is counted under its known difference instead.
#include <iostream>
#include <map>
#include <set>

#include "cvn_np_lib.h"
#include "cvn_np_lib_tables.h"
#include "cvn_np_map.h"

namespace cvn_np_map {

namespace {

// ---- Known differences: answers that disagree by the library's definition

// What a disagreement is about: the port (or nullptr) and the NP (or nullptr).
struct context {
    const card &c;
    const port_row *port;
    const np_row *np;
    const port_row *other = nullptr; // the second port of a shared NP or faceplate port
    uint32_t unit = k_none;          // the cage or instance of a port list
};

bool plugged_anywhere(const card &c, uint32_t type)
{
    for (const plug &p : c.plugs)
        if (p.type == type)
            return true;
    return false;
}

bool alt_40ge(const context &x) { return plugged_anywhere(x.c, CVN_NP_IFSUB_TYPE_40GE_ALT); }
bool any_case(const context &) { return true; }
bool ep_16x10ge(const context &x) { return plugged_anywhere(x.c, CVN_NP_IFSUB_TYPE_TV_16X10GE); }
bool split_one(const context &x)
{
    return x.port != nullptr &&
           x.c.plugged(x.port->subslot, k_any) == CVN_NP_IFSUB_TYPE_TV_SPLIT_ONE;
}
bool split_in_bay_1(const context &x)
{
    const module_type *ep = x.c.ep_at(1);
    return ep != nullptr && ep->ports == 0;
}
// The NP's first front port sits in a cage that holds nothing.
bool first_cage_empty(const context &x)
{
    return x.np != nullptr && x.np->first_front != k_unwritten &&
           x.c.plugged(0, cvn_np_lib_get_ifsubinst(x.np->first_front)) == k_none;
}
bool split_instance_0_empty(const context &x)
{
    for (uint32_t s = 0; s < x.c.subslots; ++s) {
        const module_type *ep = x.c.ep_at(s);
        if (ep != nullptr && ep->ports == 0 && x.c.plugged(s, 0) == k_none)
            return true;
    }
    return false;
}
// 1-slice bay 1 has no row for the 16- and 20-port EPs.
bool no_row_in_bay_1(const context &x)
{
    const uint32_t ep = x.c.plugged(1, k_any);
    return ep == CVN_NP_IFSUB_TYPE_TV_16X10GE || ep == CVN_NP_IFSUB_TYPE_TV_20X10GE ||
           ep == CVN_NP_IFSUB_TYPE_TV_20X10GE_B;
}
// 1-slice: the second range, from the first to the last NP-local port of
// the bay-0 instance rows' second halves and of bay 1's 20-port EP without
// port type, as the library's tables give them.
bool in_second_range(uint32_t p)
{
    const auto in = [p](const cvn_np_ep_data &row, uint32_t from) {
        return p >= row.entries[from]->np_port && p <= row.entries[row.num_ports - 1]->np_port;
    };
    for (const cvn_np_ep_data &row : cvn_np_lib_tv_1slice_bay0_ep_info_types)
        if (row.ep_type >= CVN_NP_IFSUB_TYPE_100GE && row.ep_type <= CVN_NP_IFSUB_TYPE_40GE_ALT &&
            in(row, row.num_ports / 2))
            return true;
    for (const cvn_np_ep_data &row : cvn_np_lib_tv_1slice_bay1_ep_info_types)
        if (row.ep_type == CVN_NP_IFSUB_TYPE_TV_20X_NONE && in(row, 0))
            return true;
    return false;
}
// A port of the second range is looked for in bay 0 when bay 0 holds a
// split or 20-port EP, else in bay 1; one of the first always in bay 0.
bool looked_for_in_other_bay(const card &c, const port_row *r)
{
    if (r == nullptr)
        return false;
    const bool second = in_second_range(r->np_port);
    const uint32_t bay0 = c.plugged(0, k_any);
    const bool bay0_keeps =
        bay0 == CVN_NP_IFSUB_TYPE_TV_SPLIT || bay0 == CVN_NP_IFSUB_TYPE_TV_SPLIT_B ||
        bay0 == CVN_NP_IFSUB_TYPE_TV_20X10GE || bay0 == CVN_NP_IFSUB_TYPE_TV_20X10GE_B;
    return (second && !bay0_keeps ? 1u : 0u) != r->subslot;
}
bool other_bay_by_range(const context &x)
{
    return looked_for_in_other_bay(x.c, x.port) || looked_for_in_other_bay(x.c, x.other);
}
bool empty_instance(const context &x)
{
    return x.unit != k_none && x.c.plugged(0, x.unit) == k_none;
}

struct known_difference {
    const char *families; // space-separated
    const char *checks;   // space-separated
    bool (*applies)(const context &);
    const char *why;
};

constexpr known_difference k_known[] = {
    {"brisca", "type-count", any_case,
     "aux_cvn_np_info_num_local_ports counts the ports of one cage, not of the NP's two"},
    {"brisca brisca_4p tolvar_2slice", "local-port-count type-count", alt_40ge,
     "a 40ge_alt (0x10003) module counts port_cage_40g_alt (1) NP-local port, yet maps two 40GE "
     "ports"},
    {"brisca brisca_4p fenna dornik", "first-port", first_cage_empty,
     "an NP's first front port is port 0 of its first cage, at the type of its first plugged "
     "cage, also when that first cage is empty"},
    {"maruta", "port-info", empty_instance,
     "maruta maps its ports from its tables whatever is plugged; only the port list of an "
     "instance asks the platform (empty: no ports)"},
    {"tolvar_2slice tolvar_1slice", "np-port-to-front", split_one,
     "a split_one (575) EP's NP-local ports are looked for in instance 0 only"},
    {"tolvar_2slice tolvar_1slice", "first-port", split_instance_0_empty,
     "the first front port is looked for at instance 0 of each subslot; a split EP with instance "
     "0 empty counts as an empty subslot"},
    {"tolvar_1slice", "mapped np-port-to-front unique local-port-count first-port", split_in_bay_1,
     "one NP serves both bays by NP-local port ranges: a split EP in bay 1 shares the ranges of "
     "bay 0's instance 1, and bay 1's instance 1 names no entry of its row"},
    {"tolvar_2slice tolvar_1slice", "local-port-count", ep_16x10ge,
     "cvn_np_info_num_local_ports counts no port for a 16x10ge (573) EP"},
    {"tolvar_1slice", "mapped local-port-count first-port", no_row_in_bay_1,
     "bay 1 has no row for 573, 576 and 578: their ports map to nothing"},
    {"tolvar_1slice", "np-port-to-front unique", other_bay_by_range,
     "one NP serves both bays: an NP-local port is looked for in the bay its range names, "
     "which is not always the bay that holds it"},
};

bool listed(const char *words, const char *word)
{
    const std::string w = std::string(" ") + words + " ";
    return w.find(std::string(" ") + word + " ") != std::string::npos;
}

std::map<const known_difference *, unsigned> g_known_seen;

struct checker {
    const card &c;
    check_totals &totals;
    const port_map &m;

    // One line per disagreement, its parts written one after another,
    // unless a known difference covers it.
    template <class... T> void disagree(const char *check, const context &x, const T &...what)
    {
        for (const known_difference &k : k_known)
            if (listed(k.families, c.fam->name) && listed(k.checks, check) && k.applies(x)) {
                ++g_known_seen[&k];
                return;
            }
        ++totals.disagreements;
        std::cout << hex(c.type) << " [" << plugs_text(c) << "] " << check << ": ";
        (std::cout << ... << what) << '\n';
    }
    context on(const port_row &r) const { return {c, &r, nullptr}; }
    context on(const np_row &n) const { return {c, nullptr, &n}; }

    // The type that decides a row's answers: its cage's or instance's
    // module, or its EP.
    uint32_t row_type(const port_row &r) const
    {
        return r.unit == k_none || c.fam->kind == layout::instances ? c.plugged(r.subslot, k_any)
                                                                    : c.plugged(r.subslot, r.unit);
    }

    static std::string at(const port_row &r) { return "front " + hex(r.front); }

    void front_port(const port_row &r)
    {
        if (r.status != 0 || r.np == k_unwritten || r.np_port == k_unwritten ||
            r.fplate == k_unwritten || r.port_type == k_unwritten) {
            disagree("mapped", on(r), at(r), ": cvn_np_front_port_mapping_info answers status ",
                     hex(r.status), " np ", hex(r.np), " np_port ", hex(r.np_port));
            return;
        }
        const uint32_t np = cvn_np_front_port_to_np(r.front);
        const uint32_t np_port = cvn_np_front_port_to_np_port(r.front);
        const uint32_t port_type = cvn_np_front_port_to_port_type(r.front);
        uint32_t fplate = k_unwritten, fplate_type = k_unwritten;
        const uint32_t status =
            cvn_np_front_port_to_face_plate_port(r.front, &fplate, &fplate_type);
        if (np != r.np || np_port != r.np_port || port_type != r.port_type || status != 0 ||
            fplate != r.fplate || fplate_type != r.port_type)
            disagree("front-port", on(r), at(r), ": mapping info np ", r.np, " port ", r.np_port,
                     " fplate ", hex(r.fplate), " type ", r.port_type, ", single calls np ", np,
                     " port ", np_port, " fplate ", hex(fplate), " type ", port_type);

        uint32_t back = k_unwritten, back_fplate = k_unwritten, back_type = k_unwritten;
        const uint32_t s14 = cvn_np_info_to_front_port(r.np, r.np_port, &back);
        const uint32_t s15 =
            cvn_np_info_to_fplate_porttype(r.np, r.np_port, &back_fplate, &back_type);
        if (s14 != 0 || s15 != 0 || back != r.front || back_fplate != r.fplate ||
            back_type != r.port_type)
            disagree("np-port-to-front", on(r), at(r), " (np ", r.np, " port ", r.np_port,
                     "): back to front ", hex(back), " fplate ", hex(back_fplate), " type ",
                     hex(back_type), " status ", hex(s14), "/", hex(s15));

        // A port of type NONE has no faceplate port of a speed to ask about.
        if (r.port_type == CVN_NP_PORT_TYPE_NONE)
            return;
        uint32_t fnp = k_unwritten, fnp_port = k_unwritten, ffront = k_unwritten;
        cvn_faceplate_porttype_mapping_info(r.port_type, r.fplate, &fnp, &fnp_port, &ffront);
        const uint32_t phys = cvn_faceplate_porttype_to_phys_port(r.port_type, r.fplate);
        const uint32_t f_np = cvn_faceplate_porttype_to_np(r.port_type, r.fplate);
        const uint32_t f_np_port = cvn_faceplate_porttype_to_np_port(r.port_type, r.fplate);
        if (fnp != r.np || fnp_port != r.np_port || ffront != r.front || phys != r.front ||
            f_np != r.np || f_np_port != r.np_port)
            disagree("faceplate", on(r), at(r), " (fplate ", hex(r.fplate), " type ", r.port_type,
                     "): faceplate gives front ", hex(ffront), "/", hex(phys), " np ", hex(fnp),
                     "/", hex(f_np), " np_port ", hex(fnp_port), "/", hex(f_np_port));
    }

    // No two ports share an NP port, or a faceplate port of one type.
    void unique()
    {
        std::map<std::pair<uint32_t, uint32_t>, const port_row *> by_np, by_fplate;
        for (const port_row &r : m.ports) {
            if (r.np == k_unwritten || r.np_port == k_unwritten)
                continue;
            const auto [np_it, np_new] = by_np.insert({{r.np, r.np_port}, &r});
            if (!np_new)
                disagree("unique", context{c, &r, nullptr, np_it->second}, at(r), " and ",
                         at(*np_it->second), " share np ", r.np, " port ", r.np_port);
            const auto [fp_it, fp_new] = by_fplate.insert({{r.port_type, r.fplate}, &r});
            if (!fp_new)
                disagree("unique", context{c, &r, nullptr, fp_it->second}, at(r), " and ",
                         at(*fp_it->second), " share faceplate port ", hex(r.fplate));
        }
    }

    void nps()
    {
        for (const np_row &n : m.nps) {
            unsigned found = 0;
            std::set<uint32_t> types;
            const port_row *first_row = nullptr;
            for (const port_row &r : m.ports)
                if (r.np == n.np) {
                    ++found;
                    types.insert(row_type(r));
                    if (r.front == n.first_front)
                        first_row = &r;
                }
            const uint32_t t = types.size() == 1 ? *types.begin() : k_none;
            if (n.local_ports != found)
                disagree("local-port-count", on(n), "np ", n.np, ": cvn_np_info_num_local_ports ",
                         n.local_ports, ", ports found ", found);
            if (found == 0 && n.first_status == 0 && n.first_front != k_unwritten)
                disagree("first-port", on(n), "np ", n.np,
                         " serves no port, yet its first front port is ", hex(n.first_front));
            if (found != 0 && (n.first_status != 0 || first_row == nullptr))
                disagree("first-port", on(n), "np ", n.np, ": first front port ",
                         hex(n.first_front), " (status ", hex(n.first_status),
                         ") is not one of its ports");
            // The per-type count, where every port of the NP has one type.
            if (c.fam->per_type_count && found != 0 && t != k_none) {
                const uint32_t count = aux_cvn_np_info_num_local_ports(0, n.np, t);
                if (count != found && !partly_plugged(n.np))
                    disagree("type-count", on(n), "np ", n.np, ": aux_cvn_np_info_num_local_ports(",
                             hex(t), ") ", count, ", ports found ", found);
            }
        }
    }

    // Whether some cage of the NP is empty (its count then counts the
    // NP's full set of cages of the type).
    bool partly_plugged(uint32_t np) const
    {
        std::set<uint32_t> cages;
        for (const port_row &r : m.ports)
            if (r.np == np)
                cages.insert(r.unit);
        const uint32_t per_np = c.units / cvn_np_how_many();
        return cages.size() < per_np;
    }

    // A cage's or instance's port list against the ports that exist there.
    void port_lists()
    {
        if (c.fam->kind == layout::subslot_eps)
            return;
        for (uint32_t u = 0; u < c.units; ++u) {
            const ::port_info *list =
                cvn_np_port_info_from_subslot_ifsubinst(0, static_cast<uint16_t>(u));
            unsigned found = 0;
            for (const port_row &r : m.ports)
                found += r.unit == u ? 1 : 0;
            const uint32_t listed =
                list == nullptr || list->port_type == CVN_NP_PORT_TYPE_END ? 0 : list->num_ports;
            if (listed != found)
                disagree("port-info", context{c, nullptr, nullptr, nullptr, u}, "unit ", u,
                         ": port list says ", listed, " ports, ", found, " exist");
        }
    }
};

// Every configuration --all tries on a card: each type in every cage or
// instance, nothing at all, and mixes that rotate the types (and empty)
// across the cages.  tolvar: every EP in both subslots, split EPs with
// every pair of instance types, and every pair of plain EPs.
std::vector<std::vector<plug>> configurations(const card &c)
{
    std::vector<std::vector<plug>> out;
    std::vector<uint32_t> choice;
    for (const module_type &t : c.fam->types)
        choice.push_back(t.code);
    choice.push_back(k_none);
    if (c.fam->kind != layout::subslot_eps) {
        for (uint32_t shift = 0; shift <= 2 * choice.size(); ++shift) {
            std::vector<plug> plugs;
            for (uint32_t u = 0; u < c.units; ++u) {
                // First all-equal (shift < n), then rotating mixes.
                const size_t pick = shift < choice.size() ? shift : (u + shift) % choice.size();
                const module_type *t = find_type(c.fam->types, choice[pick]);
                if (t != nullptr && !t->takes(u))
                    continue;
                plugs.push_back({0, u, choice[pick]});
            }
            out.push_back(plugs);
        }
        return out;
    }
    for (const module_type &ep : c.fam->ep_types) {
        if (ep.ports != 0) {
            for (const module_type &other : c.fam->ep_types)
                if (other.ports != 0)
                    out.push_back({{0, k_any, ep.code}, {1, k_any, other.code}});
            out.push_back({{0, k_any, ep.code}});
            continue;
        }
        for (uint32_t a : choice)
            for (uint32_t b : choice) {
                std::vector<plug> plugs;
                for (uint32_t s = 0; s < c.subslots; ++s) {
                    plugs.push_back({s, k_any, ep.code});
                    plugs.push_back({s, 0, a});
                    plugs.push_back({s, 1, b});
                }
                out.push_back(plugs);
            }
    }
    out.push_back({});
    return out;
}

} // namespace

void check_configuration(const card &c, check_totals &totals)
{
    const port_map m = read_port_map(c);
    checker k{c, totals, m};
    for (const port_row &r : m.ports)
        k.front_port(r);
    k.unique();
    k.nps();
    k.port_lists();
    ++totals.configurations;
    totals.ports += static_cast<unsigned>(m.ports.size());
}

void check_every_card(check_totals &totals)
{
    // Every card type the library serves, in the range its families use.
    for (uint32_t type = 0x3D0000; type <= 0x3D0FFF; ++type) {
        if (cvn_np_card_family(type) == nullptr)
            continue;
        card c = open_card(type);
        for (std::vector<plug> &plugs : configurations(c)) {
            c.plugs = std::move(plugs);
            check_configuration(c, totals);
        }
        ++totals.cards;
    }
}

int print_check_summary(const check_totals &totals)
{
    const auto counted = [](size_t n, const std::string &what) {
        return std::to_string(n) + " " + what + (n == 1 ? "" : "s");
    };
    for (const auto &[k, count] : g_known_seen)
        std::cout << "known difference: " << k->families << " (" << k->checks << "): " << k->why
                  << " (" << counted(count, "case") << ")\n";
    std::cout << "checked " << counted(totals.cards, "card type") << ", "
              << counted(totals.configurations, "configuration") << ", " << totals.ports
              << " ports: " << counted(totals.disagreements, "disagreement") << ", "
              << counted(g_known_seen.size(), "known difference") << '\n';
    return totals.disagreements == 0 ? 0 : 1;
}

} // namespace cvn_np_map
