// Cost of each public lookup kind on every family, beside a baseline that
// answers the same questions from a flat precomputed array.
//
// For each family the substitute is filled (every cage or subslot holds a
// module or EP) and the library is asked every valid question of a kind in
// turn (every front port, every NP-local port, ...).  Before timing, each
// question is asked once with the platform queries recorded: the answer
// goes into a flat array indexed by the question's key, and the exact
// queries (subslot, ifsubsys) the library made go with the question.  The
// baseline then makes those same queries through the same platform call
// and reads the answer from the array: the cheapest lookup that still asks
// the platform as often as the library does.
//
// The program prints Google Benchmark's console lines for the medians and,
// at the end, one table: median ns per call of the library and of the
// baseline, their ratio, and the spread of the repetitions.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "family_scenarios.h"

// ---- Recording the platform queries ---------------------------------------
// The bench links with --wrap=rva_ifsubsys_get_info: every call of the
// platform query, the library's and the baseline's alike, comes here.

extern "C" uint32_t __real_rva_ifsubsys_get_info(const ifsubsys_id *id, ifsubsys_info *info);

namespace {
bool recording = false;
std::vector<ifsubsys_id> recorded;
} // namespace

extern "C" uint32_t __wrap_rva_ifsubsys_get_info(const ifsubsys_id *id, ifsubsys_info *info)
{
    if (recording) [[unlikely]]
        recorded.push_back(*id);
    return __real_rva_ifsubsys_get_info(id, info);
}

namespace {

using cvn_scenario::FrontFacts;
using cvn_scenario::Scenario;

// One question: up to three arguments and the key of its answer.
struct Question {
    uint32_t a = 0, b = 0, c = 0;
    uint32_t key = 0;
    std::vector<ifsubsys_id> queries; // what the library asked, in order
};

// An answer: the result and up to four outputs.
struct Answer {
    uint64_t result = 0;
    uint32_t out[4] = {0, 0, 0, 0};
    bool operator==(const Answer &) const = default;
};

// A lookup kind: which questions it asks of a scenario, and how the library
// answers one (through the public function of `slot`).
struct Kind {
    const char *name;
    uint32_t slot;
    uint32_t outputs; // how many of out[] the call writes
    std::vector<Question> (*questions)(const Scenario &);
    uint64_t (*ask)(const Question &, uint32_t *out);
};

std::vector<Question> EachFront(const Scenario &s)
{
    std::vector<Question> q;
    for (const FrontFacts &x : s.facts)
        q.push_back({x.front, 0, 0, x.front, {}});
    return q;
}
std::vector<Question> EachNpPort(const Scenario &s)
{
    std::vector<Question> q;
    for (const FrontFacts &x : s.facts)
        q.push_back({x.np, x.np_port, 0, x.np * 256 + x.np_port, {}});
    return q;
}
std::vector<Question> EachFaceplate(const Scenario &s)
{
    std::vector<Question> q;
    for (const FrontFacts &x : s.facts)
        q.push_back({x.port_type, x.fplate, 0, x.port_type * 256 + x.fplate, {}});
    return q;
}
std::vector<Question> EachNp(const Scenario &s)
{
    std::vector<Question> q;
    for (uint32_t np = 0; np < s.nps; ++np)
        q.push_back({np, 0, 0, np, {}});
    return q;
}
std::vector<Question> JustOne(const Scenario &) { return {Question{}}; }
std::vector<Question> EachSubslot(const Scenario &s)
{
    std::vector<Question> q;
    for (uint32_t sub = 0; sub < s.subslots; ++sub)
        q.push_back({sub, 0, 0, sub, {}});
    return q;
}
std::vector<Question> EachPlugged(const Scenario &s)
{
    std::vector<Question> q;
    for (const cvn_scenario::Plugged &p : s.plugged)
        if (p.ifsubsys != CVN_NP_SIM_ANY)
            q.push_back({p.subslot, p.ifsubsys, 0, p.subslot * 64 + p.ifsubsys, {}});
    return q;
}
std::vector<Question> EachFrontsCage(const Scenario &s)
{
    std::vector<Question> q;
    for (const FrontFacts &x : s.facts)
        q.push_back({x.subslot, x.ifsubsys, x.ifsub_type, x.subslot * 64 + x.ifsubsys, {}});
    return q;
}
std::vector<Question> EachTuple(const Scenario &s)
{
    std::vector<Question> q;
    for (const FrontFacts &x : s.facts)
        q.push_back({x.subslot_of,
                     x.ifsubinst,
                     x.ifsubinst_port,
                     (x.subslot_of * 64 + x.ifsubinst) * 64 + x.ifsubinst_port,
                     {}});
    return q;
}

uint64_t Address(const void *p) { return reinterpret_cast<uintptr_t>(p); }

constexpr Kind kKinds[] = {
    {"front->np", 8, 0, EachFront,
     [](const Question &q, uint32_t *) -> uint64_t { return cvn_np_front_port_to_np(q.a); }},
    {"front mapping", 12, 4, EachFront,
     [](const Question &q, uint32_t *o) -> uint64_t {
         return cvn_np_front_port_mapping_info(q.a, &o[0], &o[1], &o[2], &o[3]);
     }},
    {"np port->front", 14, 1, EachNpPort,
     [](const Question &q, uint32_t *o) -> uint64_t {
         return cvn_np_info_to_front_port(q.a, q.b, &o[0]);
     }},
    {"np port->fplate", 15, 2, EachNpPort,
     [](const Question &q, uint32_t *o) -> uint64_t {
         return cvn_np_info_to_fplate_porttype(q.a, q.b, &o[0], &o[1]);
     }},
    {"first port on np", 16, 1, EachNp,
     [](const Question &q, uint32_t *o) -> uint64_t {
         return cvn_np_first_front_port_on_np(q.a, &o[0]);
     }},
    {"fplate->np", 19, 0, EachFaceplate,
     [](const Question &q, uint32_t *) -> uint64_t {
         return cvn_faceplate_porttype_to_np(q.a, q.b);
     }},
    {"fplate mapping", 22, 3, EachFaceplate,
     [](const Question &q, uint32_t *o) -> uint64_t {
         return cvn_faceplate_porttype_mapping_info(q.a, q.b, &o[0], &o[1], &o[2]);
     }},
    {"port info card", 4, 0, JustOne,
     [](const Question &, uint32_t *) -> uint64_t { return Address(cvn_np_port_info_get()); }},
    {"port info subslot", 6, 0, EachSubslot,
     [](const Question &q, uint32_t *) -> uint64_t {
         return Address(cvn_np_port_info_subslot(static_cast<uint16_t>(q.a)));
     }},
    {"port info cage", 7, 0, EachPlugged,
     [](const Question &q, uint32_t *) -> uint64_t {
         return Address(cvn_np_port_info_from_subslot_ifsubinst(static_cast<uint16_t>(q.a),
                                                                static_cast<uint16_t>(q.b)));
     }},
    {"port info by type", 38, 0, EachFrontsCage,
     [](const Question &q, uint32_t *) -> uint64_t {
         return Address(aux_cvn_np_port_info_get(q.a, q.b, q.c));
     }},
    {"encode", 30, 0, EachTuple,
     [](const Question &q, uint32_t *) -> uint64_t {
         return cvn_np_lib_set_subslot_ifsubinst_ifsubinst_port(static_cast<uint16_t>(q.a), q.b,
                                                                q.c);
     }},
    {"decode", 34, 0, EachFront,
     [](const Question &q, uint32_t *) -> uint64_t { return cvn_np_lib_get_ifsubinst(q.a); }},
};

// The family's slot is filled (else the kind does not apply).
bool SlotFilled(uint32_t slot)
{
    const auto *slots = reinterpret_cast<void *const *>(card_np_api);
    static_assert(sizeof(cvn_np_api) == CVN_NP_API_SLOTS * sizeof(void *));
    return slot < CVN_NP_API_SLOTS && slots[slot] != nullptr;
}

// One kind on one family, ready to time.
struct Case {
    Scenario *scenario;
    const Kind *kind;
    std::vector<Question> questions;
    std::vector<Answer> flat; // by question key
};

// Asks every question once, recording answers and queries; false when the
// kind does not apply or two questions with one key disagree.
bool Precompute(Case &c)
{
    cvn_scenario::Prepare(*c.scenario);
    if (!SlotFilled(c.kind->slot))
        return false;
    c.questions = c.kind->questions(*c.scenario);
    if (c.questions.empty())
        return false;
    uint32_t keys = 0;
    for (const Question &q : c.questions)
        keys = std::max(keys, q.key + 1);
    c.flat.assign(keys, Answer{});
    std::vector<bool> seen(keys, false);
    for (Question &q : c.questions) {
        Answer a;
        recorded.clear();
        recording = true;
        a.result = c.kind->ask(q, a.out);
        recording = false;
        q.queries = recorded;
        if (seen[q.key] && !(c.flat[q.key] == a)) {
            std::fprintf(stderr, "%s %s: key %u answers differently\n", c.scenario->name,
                         c.kind->name, q.key);
            return false;
        }
        seen[q.key] = true;
        c.flat[q.key] = a;
    }
    return true;
}

// The library's call is made directly (the kind is a template argument),
// as a caller would write it.
template <size_t K> void TimeLibrary(benchmark::State &state, Case *c)
{
    cvn_scenario::Prepare(*c->scenario);
    const std::vector<Question> &qs = c->questions;
    constexpr auto ask = kKinds[K].ask;
    size_t i = 0;
    uint32_t out[4];
    for (auto _ : state) {
        benchmark::DoNotOptimize(ask(qs[i], out));
        benchmark::DoNotOptimize(out);
        if (++i == qs.size())
            i = 0;
    }
}

// The same questions from the flat array, with the library's queries.
template <size_t K> void TimeBaseline(benchmark::State &state, Case *c)
{
    cvn_scenario::Prepare(*c->scenario);
    const std::vector<Question> &qs = c->questions;
    const Answer *flat = c->flat.data();
    constexpr uint32_t outputs = kKinds[K].outputs;
    size_t i = 0;
    uint32_t out[4];
    for (auto _ : state) {
        const Question &q = qs[i];
        uint64_t status = 0;
        for (const ifsubsys_id &id : q.queries) {
            ifsubsys_info info;
            status |= rva_ifsubsys_get_info(&id, &info);
            benchmark::DoNotOptimize(info);
        }
        const Answer &a = flat[q.key];
        for (uint32_t k = 0; k < outputs; ++k)
            out[k] = a.out[k];
        benchmark::DoNotOptimize(a.result | status);
        benchmark::DoNotOptimize(out);
        if (++i == qs.size())
            i = 0;
    }
}

// The two timers of every kind, by kind.
using Timer = void (*)(benchmark::State &, Case *);
struct Timers {
    Timer library, baseline;
};
template <size_t... K>
constexpr std::array<Timers, sizeof...(K)> TimersOf(std::index_sequence<K...>)
{
    return {Timers{TimeLibrary<K>, TimeBaseline<K>}...};
}
constexpr auto kTimers = TimersOf(std::make_index_sequence<std::size(kKinds)>());

// Console lines for the medians only; the repetitions are kept for the
// table printed at the end.
class TableReporter : public benchmark::ConsoleReporter {
  public:
    void ReportRuns(const std::vector<Run> &runs) override
    {
        std::vector<Run> shown;
        for (const Run &r : runs) {
            if (r.run_type == Run::RT_Iteration)
                times_[r.run_name.function_name].push_back(r.GetAdjustedCPUTime());
            else if (r.aggregate_name == "median")
                shown.push_back(r);
        }
        if (!shown.empty())
            ConsoleReporter::ReportRuns(shown);
    }

    void Finalize() override
    {
        ConsoleReporter::Finalize();
        std::printf("\n%-14s %-18s %5s %10s %10s %7s %8s\n", "family", "lookup", "slot", "lib ns",
                    "base ns", "ratio", "spread");
        int above = 0, rows = 0;
        double worst = 0;
        for (const auto &[family, kind, slot] : rows_) {
            const std::string stem = family + "/" + kind;
            const std::vector<double> &lib = times_[stem + "/lib"];
            const std::vector<double> &base = times_[stem + "/base"];
            if (lib.empty() || base.empty())
                continue;
            const double l = Median(lib), b = Median(base), ratio = l / b;
            const double spread = std::max(Spread(lib), Spread(base));
            std::printf("%-14s %-18s %5u %10.1f %10.1f %6.2fx %7.0f%%%s\n", family.c_str(),
                        kind.c_str(), slot, l, b, ratio, 100 * spread, ratio > 3 ? "  > 3x" : "");
            ++rows;
            above += ratio > 3;
            worst = std::max(worst, ratio);
        }
        std::printf("%d lookups, %d above 3x the baseline, largest ratio %.2fx\n", rows, above,
                    worst);
        std::printf("(median CPU time per call over the repetitions; spread: the largest "
                    "distance of a repetition from its median)\n");
    }

    void AddRow(const std::string &family, const std::string &kind, uint32_t slot)
    {
        rows_.push_back({family, kind, slot});
    }

  private:
    static double Median(std::vector<double> v)
    {
        std::sort(v.begin(), v.end());
        const size_t n = v.size();
        return n % 2 ? v[n / 2] : (v[n / 2 - 1] + v[n / 2]) / 2;
    }
    static double Spread(const std::vector<double> &v)
    {
        const double m = Median(v);
        double worst = 0;
        for (double x : v)
            worst = std::max(worst, std::abs(x - m) / m);
        return worst;
    }

    struct Row {
        std::string family, kind;
        uint32_t slot;
    };
    std::vector<Row> rows_;
    std::map<std::string, std::vector<double>> times_;
};

} // namespace

int main(int argc, char **argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;

    static std::vector<Scenario> scenarios = cvn_scenario::AllScenarios();
    std::vector<std::unique_ptr<Case>> cases;
    TableReporter reporter;
    for (Scenario &s : scenarios) {
        for (size_t i = 0; i < std::size(kKinds); ++i) {
            const Kind &k = kKinds[i];
            auto c = std::make_unique<Case>(Case{&s, &k, {}, {}});
            if (!Precompute(*c)) {
                std::printf("%-14s %-18s slot %2u: not measured (slot empty on this family)\n",
                            s.name, k.name, k.slot);
                continue;
            }
            const std::string stem = std::string(s.name) + "/" + k.name;
            benchmark::RegisterBenchmark((stem + "/lib").c_str(), kTimers[i].library, c.get());
            benchmark::RegisterBenchmark((stem + "/base").c_str(), kTimers[i].baseline, c.get());
            reporter.AddRow(s.name, k.name, k.slot);
            cases.push_back(std::move(c));
        }
    }
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return 0;
}
