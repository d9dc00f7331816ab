// cvn_np_map_card.cpp - the families' modules, the --module syntax, and the
// walk over the ports that exist for what is plugged.
#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include "cvn_np_lib.h"
#include "cvn_np_map.h"
#include "cvn_np_sim.h"

namespace cvn_np_map {

namespace {

// ---- What each family's cages, instances and subslots can hold ----------

// The three speeds, and 40ge_alt behind them on the cards that know it.
constexpr module_type k_four_speeds[] = {
    {CVN_NP_IFSUB_TYPE_100GE, "100ge", 1},
    {CVN_NP_IFSUB_TYPE_40GE, "40ge", 2},
    {CVN_NP_IFSUB_TYPE_10GE, "10ge", 10},
    {CVN_NP_IFSUB_TYPE_40GE_ALT, "40ge_alt", 2},
};
constexpr std::span<const module_type> k_three_speeds = std::span(k_four_speeds).first(3);
constexpr module_type k_dornik[] = {{CVN_NP_IFSUB_TYPE_DORNIK_100GE, "100ge", 1}};
// Instances 0 and 2 are an NP's 100GE port, 1 and 3 its ten 10GE ports.
constexpr module_type k_maruta[] = {
    {CVN_NP_IFSUB_TYPE_MARUTA_100GE, "100ge", 1, 0x5},
    {CVN_NP_IFSUB_TYPE_MARUTA_10GE, "10ge", 10, 0xA},
};
constexpr module_type k_quellon[] = {{CVN_NP_IFSUB_TYPE_QUELLON_10GE, "10ge", 4}};
constexpr module_type k_tolvar_eps[] = {
    {CVN_NP_IFSUB_TYPE_TV_20X_NONE, "20x_none", 20},
    {CVN_NP_IFSUB_TYPE_TV_2X10GE, "2x10ge", 2},
    {CVN_NP_IFSUB_TYPE_TV_4X10GE, "4x10ge", 4},
    {CVN_NP_IFSUB_TYPE_TV_8X10GE, "8x10ge", 8},
    {CVN_NP_IFSUB_TYPE_TV_2X40GE, "2x40ge", 2},
    {CVN_NP_IFSUB_TYPE_TV_1X40GE, "1x40ge", 1},
    {CVN_NP_IFSUB_TYPE_TV_16X10GE, "16x10ge", 16},
    {CVN_NP_IFSUB_TYPE_TV_SPLIT, "split", 0},
    {CVN_NP_IFSUB_TYPE_TV_SPLIT_ONE, "split_one", 0},
    {CVN_NP_IFSUB_TYPE_TV_20X10GE, "20x10ge", 20},
    {CVN_NP_IFSUB_TYPE_TV_SPLIT_B, "split_b", 0},
    {CVN_NP_IFSUB_TYPE_TV_20X10GE_B, "20x10ge_b", 20},
};

constexpr family k_families[] = {
    {"brisca", layout::cages, k_four_speeds, {}, true},
    {"brisca_4p", layout::cages, k_four_speeds, {}, true},
    {"fenna", layout::cages, k_three_speeds, {}, true},
    {"dornik", layout::cages, k_dornik, {}, true},
    {"maruta", layout::instances, k_maruta, {}, false},
    {"quellon", layout::instances, k_quellon, {}, false},
    {"tolvar_2slice", layout::subslot_eps, k_four_speeds, k_tolvar_eps, false},
    // The 1-slice card maps no 0x10003 instance: its front-port mapping
    // asserts on it.
    {"tolvar_1slice", layout::subslot_eps, k_three_speeds, k_tolvar_eps, false},
};

std::string type_list(std::span<const module_type> types)
{
    std::string out;
    for (const module_type &t : types)
        out += (out.empty() ? "" : ", ") + std::string(t.name) + " (" + hex(t.code) + ")";
    return out + ", none";
}

// A type given by name or code among `types`, or none.
uint32_t parse_type(const std::string &text, std::span<const module_type> types)
{
    if (text == "none")
        return k_none;
    for (const module_type &t : types)
        if (text == t.name)
            return t.code;
    uint32_t code = 0;
    if (parse_number(text, code) && (code == k_none || find_type(types, code) != nullptr))
        return code;
    return k_unwritten;
}

} // namespace

bool parse_number(const std::string &text, uint32_t &value)
{
    if (text.empty() || !(text[0] >= '0' && text[0] <= '9'))
        return false;
    errno = 0;
    char *end = nullptr;
    const unsigned long long v = std::strtoull(text.c_str(), &end, 0);
    if (errno != 0 || *end != '\0' || v > 0xFFFFFFFFull)
        return false;
    value = static_cast<uint32_t>(v);
    return true;
}

const module_type *find_type(std::span<const module_type> types, uint32_t code)
{
    for (const module_type &t : types)
        if (t.code == code)
            return &t;
    return nullptr;
}

uint32_t card::plugged(uint32_t subslot, uint32_t unit) const
{
    uint32_t type = k_none;
    for (const plug &p : plugs)
        if (p.subslot == subslot && p.unit == unit)
            type = p.type; // the later of two counts, as in the environment
    return type;
}

const module_type *card::module_at(uint32_t subslot, uint32_t unit) const
{
    return find_type(fam->types, plugged(subslot, unit));
}

const module_type *card::ep_at(uint32_t subslot) const
{
    return find_type(fam->ep_types, plugged(subslot, k_any));
}

std::string hex(uint32_t value)
{
    char text[16];
    std::snprintf(text, sizeof text, "0x%02X", value);
    return text;
}

std::string port_type_name(uint32_t port_type)
{
    constexpr std::pair<uint32_t, const char *> k_names[] = {{CVN_NP_PORT_TYPE_NONE, "none"},
                                                             {CVN_NP_PORT_TYPE_10GE, "10GE"},
                                                             {CVN_NP_PORT_TYPE_40GE, "40GE"},
                                                             {CVN_NP_PORT_TYPE_100GE, "100GE"},
                                                             {k_unwritten, "-"}};
    for (const auto &[code, name] : k_names)
        if (code == port_type)
            return name;
    return hex(port_type);
}

std::string plugs_text(const card &c)
{
    std::string out;
    for (const plug &p : c.plugs)
        out += (out.empty() ? "" : ",") + std::to_string(p.subslot) + ":" +
               (p.unit == k_any ? std::string("any") : std::to_string(p.unit)) + "=" + hex(p.type);
    return out.empty() ? "nothing plugged" : out;
}

card open_card(uint32_t card_type)
{
    const char *name = cvn_np_card_family(card_type);
    const family *fam =
        std::find_if(std::begin(k_families), std::end(k_families), [name](const family &f) {
            return name != nullptr && std::string(name) == f.name;
        });
    if (fam == std::end(k_families))
        throw usage_error{"unknown card type " + hex(card_type) +
                          " (the library serves no family for it)"};
    cvn_np_sim_reset();
    cvn_np_sim_set_card_type(card_type);
    cardtype = card_type; // dornik and quellon read it at init
    cvn_np_lib_init(card_type);
    const subslot_info *s = cvn_np_subslot_info_get();
    card c{card_type, fam, s->num_of_subslots, s->max_of_ifsubsys_per_subslot, {}};
    if (fam->kind == layout::subslot_eps)
        c.units = 2; // the instances of a split EP
    return c;
}

plug parse_module(const card &c, const std::string &text)
{
    const auto colon = text.find(':');
    const auto equals = text.find('=');
    const std::string where = "module '" + text + "': ";
    if (colon == std::string::npos || equals == std::string::npos || equals < colon)
        throw usage_error{where + "expected SUBSLOT:IFSUBSYS=TYPE"};
    plug p{};
    const std::string unit = text.substr(colon + 1, equals - colon - 1);
    if (!parse_number(text.substr(0, colon), p.subslot))
        throw usage_error{where + "the subslot is not a number"};
    if (unit == "any")
        p.unit = k_any;
    else if (!parse_number(unit, p.unit))
        throw usage_error{where + "IFSUBSYS is neither a number nor 'any'"};
    if (p.subslot >= c.subslots)
        throw usage_error{where + "a " + c.fam->name + " card has " + std::to_string(c.subslots) +
                          " subslot(s)"};
    const bool ep_level = c.fam->kind == layout::subslot_eps && p.unit == k_any;
    if (p.unit == k_any && !ep_level)
        throw usage_error{where + "'any' names a subslot's EP; a " + c.fam->name +
                          " card takes a module per cage or instance"};
    if (!ep_level && p.unit >= c.units)
        throw usage_error{where + "a " + c.fam->name + " subslot has " + std::to_string(c.units) +
                          " cages or instances"};
    const std::span<const module_type> types = ep_level ? c.fam->ep_types : c.fam->types;
    p.type = parse_type(text.substr(equals + 1), types);
    if (p.type == k_unwritten)
        throw usage_error{where + "the " + c.fam->name + " family knows " + type_list(types)};
    const module_type *t = find_type(types, p.type);
    if (t != nullptr && !ep_level && !t->takes(p.unit))
        throw usage_error{where + t->name + " does not fit instance " + std::to_string(p.unit)};
    return p;
}

void validate_plugs(const card &c)
{
    for (const plug &p : c.plugs) {
        if (c.fam->kind != layout::subslot_eps || p.unit == k_any || p.type == k_none)
            continue;
        const module_type *ep = c.ep_at(p.subslot);
        if (ep == nullptr || ep->ports != 0)
            throw usage_error{
                "module '" + std::to_string(p.subslot) + ":" + std::to_string(p.unit) + "=" +
                hex(p.type) + "': instance types need a split EP in subslot " +
                std::to_string(p.subslot) + " (e.g. " + std::to_string(p.subslot) + ":any=split)"};
    }
}

namespace {

void apply_plugs(const card &c)
{
    cvn_np_sim_reset();
    cvn_np_sim_set_card_type(c.type);
    for (const plug &p : c.plugs) {
        bool ok = cvn_np_sim_set_ifsubsys(p.subslot, p.unit, p.type) == 0;
        // The platform reports a plain EP as its instance 0 as well.
        const module_type *ep = p.unit == k_any ? find_type(c.fam->ep_types, p.type) : nullptr;
        if (ep != nullptr && ep->ports != 0)
            ok = ok && cvn_np_sim_set_ifsubsys(p.subslot, 0, p.type) == 0;
        if (!ok)
            throw usage_error{"too many modules for the platform substitute"};
    }
}

void add_unit_ports(port_map &m, uint32_t subslot, uint32_t unit, uint32_t ports)
{
    for (uint32_t p = 0; p < ports; ++p)
        m.ports.push_back({cvn_np_lib_set_subslot_ifsubinst_ifsubinst_port(
                               static_cast<uint16_t>(subslot), unit, p),
                           subslot, unit, p});
}

// The ports that exist: a cage's by its module; an instance's always (the
// library answers them whatever is plugged); an EP's by its type.
void list_ports(const card &c, port_map &m)
{
    for (uint32_t s = 0; s < c.subslots; ++s) {
        const module_type *ep = c.ep_at(s); // a split EP's instances are walked as cages
        if (c.fam->kind == layout::subslot_eps && (ep == nullptr || ep->ports != 0)) {
            for (uint32_t k = 0; ep != nullptr && k < ep->ports; ++k)
                m.ports.push_back(
                    {cvn_np_lib_set_subslot_phy_port(static_cast<uint16_t>(s), k), s, k_none, k});
            continue;
        }
        for (uint32_t u = 0; u < c.units; ++u) {
            const module_type *t = c.module_at(s, u);
            if (c.fam->kind == layout::instances)
                t = &*std::find_if(c.fam->types.begin(), c.fam->types.end(),
                                   [u](const module_type &x) { return x.takes(u); });
            if (t != nullptr)
                add_unit_ports(m, s, u, t->ports);
        }
    }
}

} // namespace

port_map read_port_map(const card &c)
{
    apply_plugs(c);
    port_map m;
    list_ports(c, m);
    for (port_row &r : m.ports)
        r.status =
            cvn_np_front_port_mapping_info(r.front, &r.np, &r.np_port, &r.fplate, &r.port_type);
    const uint32_t nps = cvn_np_how_many();
    for (uint32_t np = 0; np < nps; ++np) {
        np_row n{np, cvn_np_info_num_local_ports(np), 0, k_unwritten};
        n.first_status = cvn_np_first_front_port_on_np(np, &n.first_front);
        m.nps.push_back(n);
    }
    return m;
}

const port_row &find_port(const card &c, const port_map &m, const std::string &kind,
                          const std::string &question)
{
    const auto colon = question.find(':');
    const bool pair = kind != "front";
    std::string first = pair ? question.substr(0, colon) : question;
    const std::string second = pair && colon != std::string::npos ? question.substr(colon + 1) : "";
    uint32_t a = 0, b = 0;
    if (kind == "fplate") { // a port-type name (10ge, 40GE, ...) or code
        std::transform(first.begin(), first.end(), first.begin(),
                       [](unsigned char ch) { return std::toupper(ch); });
        for (uint32_t t = CVN_NP_PORT_TYPE_NONE; t <= CVN_NP_PORT_TYPE_100GE; ++t)
            if (first == port_type_name(t) || (t == CVN_NP_PORT_TYPE_NONE && first == "NONE"))
                first = std::to_string(t);
    }
    if (!parse_number(first, a) ||
        (pair && (colon == std::string::npos || !parse_number(second, b))))
        throw usage_error{"--" + kind + " '" + question + "': expected " +
                          (kind == "front" ? "PORT"
                           : kind == "np"  ? "NP:NP_PORT"
                                           : "TYPE:PORT (TYPE 10ge, 40ge, 100ge or a code)") +
                          ", numbers as C integer literals"};
    for (const port_row &r : m.ports)
        if (r.status == 0 && (kind == "front" ? r.front == a
                              : kind == "np"  ? r.np == a && r.np_port == b
                                              : r.port_type == a && r.fplate == b))
            return r;
    const std::string what = kind == "front" ? "front port " + hex(a)
                             : kind == "np"
                                 ? "NP " + std::to_string(a) + " NP-local port " + std::to_string(b)
                                 : port_type_name(a) + " faceplate port " + hex(b);
    throw usage_error{"card " + hex(c.type) + " (" + c.fam->name + ") with " + plugs_text(c) +
                      " has no " + what};
}

} // namespace cvn_np_map
