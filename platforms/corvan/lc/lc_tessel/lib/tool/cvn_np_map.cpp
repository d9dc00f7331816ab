// cvn_np_map - the port-map explorer.  See usage() and the README.
#include <cstdlib>
#include <iostream>

#include "cvn_np_map.h"

namespace {

using namespace cvn_np_map;

void usage(std::ostream &out)
{
    out << R"(usage: cvn_np_map CARDTYPE [--module SUBSLOT:IFSUBSYS=TYPE]... [--format table|csv|json]
                  [--svg FILE]
       cvn_np_map CARDTYPE [--module ...]... [--format F]
                  --front PORT | --np NP:NP_PORT | --fplate TYPE:PORT
       cvn_np_map CARDTYPE [--module ...]... --check
       cvn_np_map --check --all
       cvn_np_map --help

Shows a card's port map as the port-mapping library answers it, for the
modules you say are plugged in (nothing is plugged unless a --module says
so; the environment's CVN_NP_SIM_* variables are not read).

  CARDTYPE     a card type as a C integer literal, e.g. 0x3D0274.
  --module S:I=TYPE
               what the platform reports in subslot S, cage or instance I
               (or 'any': the subslot's EP on a tolvar card), the syntax of
               CVN_NP_SIM_IFSUBSYS.  TYPE is a code (e.g. 0x10002, 574) or a
               name: 10ge, 40ge, 100ge, 40ge_alt, none, and on tolvar cards
               the EPs 20x_none 2x10ge 4x10ge 8x10ge 2x40ge 1x40ge 16x10ge
               split split_one 20x10ge split_b 20x10ge_b.  Only the types
               the card's family knows are accepted.  Repeatable.
  --format F   table (aligned columns, the default), csv or json.  A row per
               front port: front port, subslot, cage or instance ('unit'; '-'
               for a tolvar plain EP), port in it, faceplate port, port type,
               NP, NP-local port; then a row per NP: its local-port count and
               first front port.  '-' (null) marks an answer not given.
  --svg FILE   also writes a picture of the front panel to FILE: cages or
               subslots in order, each port with its front port and NP-local
               port, coloured by NP; empty cages dashed; a legend.
  --front PORT, --np NP:NP_PORT, --fplate TYPE:PORT
               one question: prints only the row of the port with that
               front port, that NP and NP-local port, or that port type
               (10ge, 40ge, 100ge or a code) and faceplate port, with the
               header (table, csv) or as one JSON object like an element of
               "ports".  A port the card does not have with these modules
               is one line on stderr and exit status 2, e.g.
               cvn_np_map 0x3D0274 --module 0:3=100ge --front 0x30
  --check      checks that the library's answers agree with each other:
               front port to NP and NP port and back, faceplate port to front
               port and back, each NP's first port and local-port count, each
               cage's port list.  One line per disagreement, then a summary;
               a disagreement that the library's defined answers make is
               listed once as a known difference.
  --all        with --check: every card type, with every module its family
               knows in every cage or subslot, alone and mixed.

Exit status: 0; 1 when --check found a disagreement; 2 for bad input (an
unknown card type, a malformed module, a type the family does not know, a
port the card does not have).
)";
}

struct options {
    const char *card = nullptr;
    std::vector<std::string> modules;
    format fmt = format::table;
    std::string svg;
    bool check = false, all = false;
    std::string question_kind, question; // --front, --np or --fplate
};

options parse(int argc, char **argv)
{
    options o;
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        auto next = [&]() -> std::string {
            if (i + 1 >= argc)
                throw usage_error{arg + " needs a value (see --help)"};
            return argv[++i];
        };
        if (arg == "--help" || arg == "-h") {
            usage(std::cout);
            std::exit(0);
        } else if (arg == "--module") {
            o.modules.push_back(next());
        } else if (arg == "--format") {
            const std::string f = next();
            o.fmt = f == "csv" ? format::csv : f == "json" ? format::json : format::table;
            if (o.fmt == format::table && f != "table")
                throw usage_error{"unknown format '" + f + "' (table, csv or json)"};
        } else if (arg == "--svg") {
            o.svg = next();
        } else if (arg == "--front" || arg == "--np" || arg == "--fplate") {
            if (!o.question_kind.empty())
                throw usage_error{"one question at a time (--front, --np or --fplate)"};
            o.question_kind = arg.substr(2);
            o.question = next();
        } else if (arg == "--check") {
            o.check = true;
        } else if (arg == "--all") {
            o.all = true;
        } else if (arg.rfind("-", 0) == 0) {
            throw usage_error{"unknown option '" + arg + "' (see --help)"};
        } else if (o.card == nullptr) {
            o.card = argv[i];
        } else {
            throw usage_error{"more than one card type ('" + arg + "')"};
        }
    }
    if (o.all && !o.check)
        throw usage_error{"--all goes with --check"};
    if (o.all && (o.card != nullptr || !o.modules.empty()))
        throw usage_error{"--check --all takes no card type or module"};
    if (!o.question_kind.empty() && (o.check || !o.svg.empty()))
        throw usage_error{"--" + o.question_kind + " asks about one port; it goes with neither " +
                          "--check nor --svg"};
    if (!o.all && o.card == nullptr)
        throw usage_error{"no card type given (see --help)"};
    return o;
}

int run(const options &o)
{
    check_totals totals;
    if (o.all) {
        check_every_card(totals);
        return print_check_summary(totals);
    }
    uint32_t type = 0;
    if (!parse_number(o.card, type))
        throw usage_error{std::string("card type '") + o.card + "' is not a number"};
    card c = open_card(type);
    for (const std::string &m : o.modules)
        c.plugs.push_back(parse_module(c, m));
    validate_plugs(c);
    if (o.check) {
        check_configuration(c, totals);
        totals.cards = 1;
        return print_check_summary(totals);
    }
    const port_map m = read_port_map(c);
    if (!o.question_kind.empty()) {
        print_port(find_port(c, m, o.question_kind, o.question), o.fmt);
        return 0;
    }
    if (!o.svg.empty()) // first, so that a file it cannot write is all it says
        write_svg(c, m, o.svg);
    print_map(c, m, o.fmt);
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    // What is plugged comes from --module alone.
    unsetenv("CVN_NP_SIM_IFSUBSYS");
    unsetenv("CVN_NP_SIM_CARD_TYPE");
    try {
        return run(parse(argc, argv));
    } catch (const usage_error &e) {
        std::cerr << "cvn_np_map: " << e.message << '\n';
        return 2;
    }
}
