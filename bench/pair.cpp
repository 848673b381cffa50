// Runs two programs in turn, A B A B, and prints the medians of both in one row of a table.
//
//   kiv-bench-pair --header
//   kiv-bench-pair [--cold] [--fresh | --changed | --one-changed] LABEL PAIRS LIST DIR_A DIR_B
//                  -- A… -- B…
//
// LIST names the files that each run leaves in its folder, with their sizes: they are checked after
// each run and, with --fresh, removed before it, with --changed made other bytes, with
// --one-changed the first of them, all outside of the measured time. With --cold, which is for root
// alone, the system forgets before each run what it has read. The first pair warms up and does not
// count. The ratio is that of the medians; beside it stand the quartiles of the pairs' own ratios.
#include "bench/outputs.h"
#include "bench/process.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <exception>
#include <fstream>
#include <map>
#include <stdexcept>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

using Words = std::vector<std::string>;

struct Side {
    std::filesystem::path dir;
    Words command;
    std::vector<kiv::Usage> runs = {};
};

/// What a run finds of the files that it is to leave.
enum class Before { as_they_are, fresh, changed, one_changed };

struct Call {
    bool is_cold = false;
    Before before = Before::as_they_are;
    std::string label;
    int pairs = 0;
    std::vector<kiv::Output> outputs;
    Side a;
    Side b;
};

Call ReadCall(Words words)
{
    Call call;
    const std::map<std::string, Before> wishes = {{"--fresh", Before::fresh},
                                                  {"--changed", Before::changed},
                                                  {"--one-changed", Before::one_changed}};
    call.is_cold = !words.empty() && words[0] == "--cold";
    if (call.is_cold)
        words.erase(words.begin());
    if (const auto wish = wishes.find(words.empty() ? "" : words[0]); wish != wishes.end()) {
        call.before = wish->second;
        words.erase(words.begin());
    }
    const auto first = std::ranges::find(words, "--");
    if (first - words.begin() != 5)
        throw std::invalid_argument("five arguments are wanted before the commands");
    const auto second = std::find(first + 1, words.end(), "--");
    if (first + 1 == second || second == words.end() || second + 1 == words.end())
        throw std::invalid_argument("two commands are wanted, each after --");
    call.label = words[0];
    call.pairs = std::stoi(words[1]);
    if (call.pairs < 1)
        throw std::invalid_argument("at least one pair is wanted");
    call.outputs = kiv::ReadOutputList(words[2]);
    call.a = {words[3], Words(first + 1, second)};
    call.b = {words[4], Words(second + 1, words.end())};
    return call;
}

void Check(const Side& side, const std::vector<kiv::Output>& outputs)
{
    for (const kiv::Output& output : outputs) {
        const std::filesystem::path path = side.dir / output.name;
        if (std::filesystem::file_size(path) != output.size)
            throw std::runtime_error(path.string() + " has another size than in the list");
    }
}

/// Has the system forget what it holds of the disks.
void Cool()
{
    ::sync();
    std::ofstream caches("/proc/sys/vm/drop_caches");
    if (!(caches << "3" << std::flush))
        throw std::runtime_error("only root has the system forget what it has read");
}

void RunOnce(Side& side, const Call& call)
{
    if (call.before == Before::fresh)
        kiv::RemoveOutputs(side.dir, call.outputs);
    else if (call.before == Before::changed)
        kiv::SpoilOutputs(side.dir, call.outputs);
    else if (call.before == Before::one_changed)
        kiv::SpoilOutputs(side.dir, {call.outputs.front()});
    if (call.is_cold)
        Cool();
    side.runs.push_back(kiv::RunProgram(side.command));
    if (side.runs.back().exit_code != 0)
        throw std::runtime_error(side.command[0] + " ended with exit code " +
                                 std::to_string(side.runs.back().exit_code));
    Check(side, call.outputs);
}

template <class Value>
Value Median(const std::vector<kiv::Usage>& runs, Value kiv::Usage::*member)
{
    std::vector<Value> values;
    values.reserve(runs.size());
    for (const kiv::Usage& run : runs)
        values.push_back(run.*member);
    std::ranges::sort(values);
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

/// The value below which a part of them lies.
double Quantile(std::vector<double> values, double part)
{
    std::ranges::sort(values);
    return values[static_cast<std::size_t>(
        std::lround(part * static_cast<double>(values.size() - 1)))];
}

/// The rows are those of a table in Markdown, to be put into a text as they are.
void PrintHeader()
{
    std::printf("| %-14s | %9s | %8s | %9s | %8s | %8s | %-12s | %7s | %10s |\n", "", "A wall ms",
                "A cpu ms", "B wall ms", "B cpu ms", "A:B wall", "quartiles", "A:B cpu",
                "A peak KiB");
    std::printf("|----------------|-----------|----------|-----------|----------|----------|"
                "--------------|---------|------------|\n");
}

void PrintRow(const Call& call)
{
    const double a_wall = Median(call.a.runs, &kiv::Usage::wall_ms);
    const double a_cpu = Median(call.a.runs, &kiv::Usage::cpu_ms);
    const double b_wall = Median(call.b.runs, &kiv::Usage::wall_ms);
    const double b_cpu = Median(call.b.runs, &kiv::Usage::cpu_ms);
    const long peak = std::ranges::max(call.a.runs, {}, &kiv::Usage::peak_rss_kib).peak_rss_kib;
    std::vector<double> ratios;
    for (std::size_t i = 0; i < call.a.runs.size(); ++i)
        ratios.push_back(call.a.runs[i].wall_ms / call.b.runs[i].wall_ms);
    std::printf(
        "| %-14s | %9.2f | %8.2f | %9.2f | %8.2f | %8.2f | %4.2f to %4.2f | %7.2f | %10ld |\n",
        call.label.c_str(), a_wall, a_cpu, b_wall, b_cpu, a_wall / b_wall, Quantile(ratios, 0.25),
        Quantile(ratios, 0.75), a_cpu / b_cpu, peak);
}

void RunPairs(Call& call)
{
    for (int pair = 0; pair <= call.pairs; ++pair) {
        RunOnce(call.a, call);
        RunOnce(call.b, call);
        if (pair == 0) {
            call.a.runs.clear();
            call.b.runs.clear();
        }
    }
}

} // namespace

int main(int argc, char** argv)
{
    try {
        const Words words(argv + 1, argv + argc);
        if (words == Words{"--header"}) {
            PrintHeader();
            return 0;
        }
        Call call = ReadCall(words);
        RunPairs(call);
        PrintRow(call);
    } catch (const std::invalid_argument& error) {
        std::fprintf(
            stderr,
            "kiv-bench-pair: %s\n"
            "usage: kiv-bench-pair --header\n"
            "       kiv-bench-pair [--cold] [--fresh | --changed | --one-changed] LABEL PAIRS LIST "
            "DIR_A DIR_B -- A... -- B...\n",
            error.what());
        return 2;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "kiv-bench-pair: %s\n", error.what());
        return 1;
    }
    return 0;
}
