// cvn_np_map_output.cpp - the port map as a table, CSV or JSON, and the
// front panel as an SVG picture.
#include <algorithm>
#include <fstream>
#include <iostream>
#include <sstream>

#include "cvn_np_map.h"

namespace cvn_np_map {

namespace {

std::string value(uint32_t v, bool as_hex = false)
{
    if (v == k_unwritten)
        return "-";
    return as_hex ? hex(v) : std::to_string(v);
}

std::string unit_text(uint32_t unit) { return unit == k_none ? "-" : std::to_string(unit); }

// The cells of one port row and one NP row, in column order.
std::vector<std::string> port_cells(const port_row &r)
{
    return {hex(r.front),          std::to_string(r.subslot),
            unit_text(r.unit),     std::to_string(r.port),
            value(r.fplate, true), port_type_name(r.port_type),
            value(r.np),           value(r.np_port)};
}

std::vector<std::string> np_cells(const np_row &n)
{
    return {std::to_string(n.np), std::to_string(n.local_ports),
            n.first_status == 0 ? value(n.first_front, true) : "-"};
}

const std::vector<std::string> k_port_header = {"front",  "subslot", "unit", "port",
                                                "fplate", "type",    "np",   "np_port"};
const std::vector<std::string> k_np_header = {"np", "local_ports", "first_front"};

// Aligned columns (the table) or comma-separated cells (CSV), header first.
void print_rows(const std::vector<std::string> &header,
                const std::vector<std::vector<std::string>> &rows, format f)
{
    std::vector<size_t> width(header.size());
    for (size_t i = 0; i < header.size(); ++i) {
        width[i] = header[i].size();
        for (const auto &row : rows)
            width[i] = std::max(width[i], row[i].size());
    }
    auto line = [&](const std::vector<std::string> &cells) {
        std::string out;
        for (size_t i = 0; i < cells.size(); ++i)
            out += (f == format::csv
                        ? std::string(i == 0 ? "" : ",")
                        : std::string(width[i] - cells[i].size() + (i == 0 ? 0 : 2), ' ')) +
                   cells[i];
        std::cout << out << '\n';
    };
    line(header);
    for (const auto &row : rows)
        line(row);
}

// A row as a JSON object: numbers stay numbers, "-" becomes null, names
// stay strings.
void print_json_object(const std::vector<std::string> &header, const std::vector<std::string> &row)
{
    std::cout << '{';
    for (size_t i = 0; i < header.size(); ++i) {
        const std::string &cell = row[i];
        std::string json = "\"" + cell + "\"";
        if (cell == "-")
            json = "null";
        else if (cell.rfind("0x", 0) == 0)
            json = std::to_string(std::stoul(cell, nullptr, 16));
        else if (cell.find_first_not_of("0123456789") == std::string::npos)
            json = cell;
        std::cout << (i == 0 ? "" : ", ") << '"' << header[i] << "\": " << json;
    }
    std::cout << '}';
}

void print_json_rows(const char *name, const std::vector<std::string> &header,
                     const std::vector<std::vector<std::string>> &rows, bool last)
{
    std::cout << "  \"" << name << "\": [";
    for (size_t r = 0; r < rows.size(); ++r) {
        std::cout << (r == 0 ? "\n    " : ",\n    ");
        print_json_object(header, rows[r]);
    }
    std::cout << (rows.empty() ? "]" : "\n  ]") << (last ? "\n" : ",\n");
}

} // namespace

void print_map(const card &c, const port_map &m, format f)
{
    std::vector<std::vector<std::string>> ports, nps;
    for (const port_row &r : m.ports)
        ports.push_back(port_cells(r));
    for (const np_row &n : m.nps)
        nps.push_back(np_cells(n));
    if (f == format::table)
        std::cout << "card " << hex(c.type) << " (" << c.fam->name << "), " << plugs_text(c)
                  << "\n\n";
    if (f != format::json) {
        print_rows(k_port_header, ports, f);
        std::cout << '\n';
        print_rows(k_np_header, nps, f);
        return;
    }
    std::cout << "{\n  \"card_type\": " << c.type << ",\n  \"family\": \"" << c.fam->name
              << "\",\n  \"modules\": [";
    for (size_t i = 0; i < c.plugs.size(); ++i)
        std::cout << (i == 0 ? "" : ", ") << "{\"subslot\": " << c.plugs[i].subslot
                  << ", \"ifsubsys\": "
                  << (c.plugs[i].unit == k_any ? std::string("\"any\"")
                                               : std::to_string(c.plugs[i].unit))
                  << ", \"type\": " << c.plugs[i].type << "}";
    std::cout << "],\n";
    print_json_rows("ports", k_port_header, ports, false);
    print_json_rows("nps", k_np_header, nps, true);
    std::cout << "}\n";
}

void print_port(const port_row &r, format f)
{
    if (f != format::json)
        print_rows(k_port_header, {port_cells(r)}, f);
    else {
        print_json_object(k_port_header, port_cells(r));
        std::cout << '\n';
    }
}

// ---- The front panel ------------------------------------------------------

namespace {

constexpr const char *k_np_colours[] = {"#1f77b4", "#ff7f0e", "#2ca02c", "#d62728",
                                        "#9467bd", "#8c564b", "#e377c2", "#17becf"};
constexpr int k_port_w = 58, k_port_h = 40, k_gap = 6, k_margin = 20;
constexpr int k_char_w = 8; // 12px monospace: 0.6 em, 7.2px, rounded up

const char *np_colour(uint32_t np)
{
    return np == k_unwritten ? "#bbbbbb" : k_np_colours[np % std::size(k_np_colours)];
}

// A box on the panel: one cage or instance, or a whole plain EP.
struct panel_box {
    uint32_t subslot;
    uint32_t unit;
    std::string label;
    std::vector<const port_row *> ports;
};

std::vector<panel_box> panel_boxes(const card &c, const port_map &m)
{
    std::vector<panel_box> boxes;
    for (uint32_t s = 0; s < c.subslots; ++s) {
        const bool eps = c.fam->kind == layout::subslot_eps;
        const module_type *ep = eps ? c.ep_at(s) : nullptr;
        const bool whole = eps && (ep == nullptr || ep->ports != 0); // a plain EP or none: one box
        for (uint32_t u = 0; u < (whole ? 1 : c.units); ++u) {
            const module_type *t = c.module_at(s, u);
            panel_box b{s, whole ? k_none : u, "", {}};
            const std::string where = eps ? "subslot " + std::to_string(s) : "";
            if (b.unit == k_none)
                b.label = where + ": " + (ep != nullptr ? ep->name : "empty");
            else
                b.label = (eps                            ? where + " " + (ep->name) + " inst "
                           : c.fam->kind == layout::cages ? "cage "
                                                          : "instance ") +
                          std::to_string(u) + ": " + (t != nullptr ? t->name : "none");
            for (const port_row &r : m.ports)
                if (r.subslot == s && (b.unit == k_none || r.unit == u))
                    b.ports.push_back(&r);
            boxes.push_back(b);
        }
    }
    return boxes;
}

std::string escape(const std::string &text)
{
    std::string out;
    for (char ch : text)
        out += ch == '<' ? "&lt;" : ch == '>' ? "&gt;" : ch == '&' ? "&amp;" : std::string(1, ch);
    return out;
}

} // namespace

void write_svg(const card &c, const port_map &m, const std::string &path)
{
    const std::vector<panel_box> boxes = panel_boxes(c, m);
    std::ostringstream body;
    int x = k_margin, y = k_margin + 40, row_h = 0, width = 0;
    constexpr int k_row_limit = 1100;
    for (const panel_box &b : boxes) {
        const int cols = std::max<int>(2, (static_cast<int>(b.ports.size()) + 1) / 2);
        // The box is as wide as its ports and its label (monospace: every
        // character k_char_w wide), so the label stays inside.
        const int w = std::max(cols * (k_port_w + k_gap) + k_gap,
                               static_cast<int>(b.label.size()) * k_char_w + 2 * k_gap);
        const int h = 2 * (k_port_h + k_gap) + k_gap + 22;
        if (x + w > k_row_limit && x > k_margin) {
            x = k_margin;
            y += row_h + 16;
            row_h = 0;
        }
        const bool empty = b.ports.empty();
        body << "<g class=\"" << (empty ? "empty" : "unit") << "\">\n"
             << "<rect x=\"" << x << "\" y=\"" << y << "\" width=\"" << w << "\" height=\"" << h
             << "\" rx=\"6\" fill=\"" << (empty ? "#f4f4f4" : "#e8e8e8")
             << "\" stroke=\"#555\" stroke-width=\"2\""
             << (empty ? " stroke-dasharray=\"6,4\"" : "") << "/>\n"
             << "<text x=\"" << x + 6 << "\" y=\"" << y + 16
             << "\" font-size=\"12\" font-family=\"monospace\">" << escape(b.label) << "</text>\n";
        for (size_t i = 0; i < b.ports.size(); ++i) {
            const port_row &r = *b.ports[i];
            const int px = x + k_gap + static_cast<int>(i / 2) * (k_port_w + k_gap);
            const int py = y + 22 + static_cast<int>(i % 2) * (k_port_h + k_gap) + k_gap;
            body << "<rect class=\"port\" x=\"" << px << "\" y=\"" << py << "\" width=\""
                 << k_port_w << "\" height=\"" << k_port_h << "\" rx=\"3\" fill=\""
                 << np_colour(r.np) << "\"/>\n"
                 << "<text x=\"" << px + 4 << "\" y=\"" << py + 16
                 << "\" font-size=\"12\" font-family=\"monospace\" fill=\"#fff\">" << hex(r.front)
                 << "</text>\n"
                 << "<text x=\"" << px + 4 << "\" y=\"" << py + 32
                 << "\" font-size=\"11\" font-family=\"monospace\" fill=\"#fff\">np "
                 << value(r.np_port) << "</text>\n";
        }
        body << "</g>\n";
        x += w + 12;
        width = std::max(width, x);
        row_h = std::max(row_h, h);
    }
    y += row_h + 24;
    // The legend: one swatch per NP of the card, and the empty cage.
    int lx = k_margin;
    for (const np_row &n : m.nps) {
        body << "<rect x=\"" << lx << "\" y=\"" << y << "\" width=\"16\" height=\"16\" fill=\""
             << np_colour(n.np) << "\"/><text x=\"" << lx + 22 << "\" y=\"" << y + 13
             << "\" font-size=\"12\" font-family=\"sans-serif\">NP " << n.np << "</text>\n";
        lx += 80;
    }
    body << "<rect x=\"" << lx << "\" y=\"" << y
         << "\" width=\"16\" height=\"16\" fill=\"#f4f4f4\" stroke=\"#555\" "
            "stroke-dasharray=\"3,2\"/><text x=\""
         << lx + 22 << "\" y=\"" << y + 13
         << "\" font-size=\"12\" font-family=\"sans-serif\">empty</text>\n";
    width = std::max(width, lx + 100) + k_margin;
    const int height = y + 16 + k_margin;

    std::ofstream out(path);
    if (!out)
        throw usage_error{"cannot write " + path};
    out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        << "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" << width << "\" height=\"" << height
        << "\" viewBox=\"0 0 " << width << ' ' << height << "\">\n"
        << "<rect width=\"100%\" height=\"100%\" fill=\"#ffffff\"/>\n"
        << "<text x=\"" << k_margin << "\" y=\"" << k_margin + 14
        << "\" font-size=\"16\" font-family=\"sans-serif\">card " << hex(c.type) << " ("
        << c.fam->name << "): front port / NP-local port, coloured by NP</text>\n"
        << body.str() << "</svg>\n";
    if (!out.flush())
        throw usage_error{"cannot write " + path};
}

} // namespace cvn_np_map
