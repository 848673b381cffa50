// Runs two programs in turn, A B A B, and prints the medians of both in one row of a table.
//
//   kiv-bench-pair --header
//   kiv-bench-pair [--fresh | --changed] LABEL PAIRS LIST DIR_A DIR_B -- A… -- B…
//
// LIST names the files that each run leaves in its folder, with their sizes: they are checked after
// each run and, with --fresh, removed before it, with --changed made other bytes, all outside of
// the measured time. The first pair warms up and does not count.
#include "bench/outputs.h"
#include "bench/process.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Words = std::vector<std::string>;

struct Side {
    std::filesystem::path dir;
    Words command;
    std::vector<kiv::Usage> runs = {};
};

/// What a run finds of the files that it is to leave.
enum class Before { as_they_are, fresh, changed };

struct Call {
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
    if (!words.empty() && (words[0] == "--fresh" || words[0] == "--changed")) {
        call.before = words[0] == "--fresh" ? Before::fresh : Before::changed;
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

void RunOnce(Side& side, const Call& call)
{
    if (call.before == Before::fresh)
        kiv::RemoveOutputs(side.dir, call.outputs);
    else if (call.before == Before::changed)
        kiv::SpoilOutputs(side.dir, call.outputs);
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

void PrintHeader()
{
    std::printf("%-14s %10s %10s %10s %10s %8s %8s %12s\n", "", "A wall ms", "A cpu ms",
                "B wall ms", "B cpu ms", "A:B wall", "A:B cpu", "A peak KiB");
}

void PrintRow(const Call& call)
{
    const double a_wall = Median(call.a.runs, &kiv::Usage::wall_ms);
    const double a_cpu = Median(call.a.runs, &kiv::Usage::cpu_ms);
    const double b_wall = Median(call.b.runs, &kiv::Usage::wall_ms);
    const double b_cpu = Median(call.b.runs, &kiv::Usage::cpu_ms);
    const long peak = std::ranges::max(call.a.runs, {}, &kiv::Usage::peak_rss_kib).peak_rss_kib;
    std::printf("%-14s %10.2f %10.2f %10.2f %10.2f %8.2f %8.2f %12ld\n", call.label.c_str(), a_wall,
                a_cpu, b_wall, b_cpu, a_wall / b_wall, a_cpu / b_cpu, peak);
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
            "       kiv-bench-pair [--fresh] LABEL PAIRS LIST DIR_A DIR_B -- A... -- B...\n",
            error.what());
        return 2;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "kiv-bench-pair: %s\n", error.what());
        return 1;
    }
    return 0;
}
