// Makes the inputs that the targets begin with of the cases, those of the manual, too, and of
// pictures:
//   fuzz_seeds FOLDER FILE …
// Each target gets a folder of them in FOLDER, and a list of some as libFuzzer reads it.
#include "platform/site_files.h"
#include "tests/cases/case_file.h"
#include "tests/fuzz/scene.h"
#include "tests/support/folders.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace {

namespace fs = std::filesystem;
using namespace kiv::fuzz;
using kiv::test::Case;
using Words = std::vector<std::string>;

constexpr std::size_t kLargestSeed = 16384; // mutating larger ones finds little
constexpr std::size_t kListed = 300;        // a run of some seconds is to come to its own inputs

std::string Joined(const Words& words, char separator)
{
    std::string text;
    for (const std::string& word : words)
        text += (&word == &words.front() ? "" : std::string(1, separator)) + word;
    return text;
}

/// Whether a line uses values so often that, where these do the same, one input takes as long as a
/// hundred others. The cases that say that this comes to an end are such.
bool IsHeavy(std::string_view bytes)
{
    constexpr std::size_t kMostUses = 16;
    while (!bytes.empty()) {
        const std::string_view line = kiv::TakeLine(bytes);
        std::size_t uses = 0;
        for (std::size_t at = line.find("@@"); at != kiv::npos; at = line.find("@@", at + 2))
            ++uses;
        if (uses > kMostUses)
            return true;
    }
    return false;
}

/// The seeds of each target, each once.
class Seeds {
  public:
    explicit Seeds(fs::path folder) : folder_(std::move(folder)) { fs::remove_all(folder_); }

    void Add(const std::string& target, const std::string& bytes)
    {
        if (bytes.size() > kLargestSeed)
            return;
        const fs::path path = folder_ / target / std::to_string(std::hash<std::string>()(bytes));
        if (fs::exists(path))
            return;
        kiv::test::WriteBytes(path, bytes);
        if (!IsHeavy(bytes))
            paths_[target].push_back(path.string());
    }

    void WriteLists() const
    {
        for (const auto& [target, paths] : paths_) {
            // Each input of these is half a dozen builds.
            const bool is_slow = target == "check" || target == "why";
            const std::size_t most = is_slow ? kListed / 8 : kListed;
            const std::size_t step = paths.size() / most + 1;
            Words listed;
            for (std::size_t i = 0; i < paths.size(); i += step)
                listed.push_back(paths[i]);
            kiv::test::WriteBytes(folder_ / (target + ".list"), Joined(listed, ','));
        }
    }

  private:
    fs::path folder_;
    std::map<std::string, Words> paths_;
};

Scene SceneOf(const Case& one, const std::string& line)
{
    Scene scene{line, {}};
    for (const auto& [name, bytes] : one.in)
        scene.files.push_back({name, bytes});
    return scene;
}

/// The value of an option, "--name V" or "--name=V"; "" when it is not given.
std::string Value(const Words& arguments, const std::string& name)
{
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (arguments[i] == name && i + 1 < arguments.size())
            return arguments[i + 1];
        if (arguments[i].starts_with(name + "="))
            return arguments[i].substr(name.size() + 1);
    }
    return {};
}

void AddSite(Seeds& seeds, const Case& one)
{
    Scene scene = SceneOf(one, Joined(one.arguments, ' '));
    const std::string sample(kiv::kTemplateFile);
    if (!one.in.contains(sample) && !one.absent.contains(sample))
        scene.files.push_back({sample, ";\n"});
    for (const char* const target : {"site", "check", "why"})
        seeds.Add(target, SceneText(scene));
}

void AddBlocks(Seeds& seeds, const Case& one)
{
    const auto list = one.in.find(std::string(kiv::kPageListFile));
    if (list == one.in.end() || !kiv::Contains(kiv::LowerCase(list->second), "<zu"))
        return;
    std::string seed = list->second;
    for (const auto& [name, bytes] : one.in)
        if (name.ends_with("quiz.txt"))
            seed += kBetweenParts + ("text" + (kBetweenParts + bytes));
    seeds.Add("blocks", seed);
}

void AddNews(Seeds& seeds, const Case& one)
{
    Words fields;
    for (const char* const name :
         {"--site", "--name", "--date", "--title", "--byline", "--subhead", "--newspaper"})
        fields.push_back(Value(one.arguments, name));
    fields.insert(fields.end(), one.arguments.begin(), one.arguments.end());
    seeds.Add("news", SceneText(SceneOf(one, Joined(fields, '\t'))));
}

void AddTexts(Seeds& seeds, const Case& one)
{
    Words words = one.arguments;
    for (const std::string name : {"--mode", "--prefix"})
        words.push_back(name + "=" + Value(one.arguments, name));
    seeds.Add("texts",
              Joined(words, '\t') + kBetweenParts + kiv::ToUtf8(one.standard_input.value_or("")));
}

void AddNames(Seeds& seeds, const Case& one)
{
    Words words = one.arguments;
    std::erase_if(words, [](const std::string& word) {
        return word == "--" || word == "--dry-run" || word.starts_with("C:\\");
    });
    Scene scene = SceneOf(one, Joined(words, '\t'));
    for (SceneFile& file : scene.files)
        file.name = kiv::ToUtf8(file.name);
    seeds.Add("names", SceneText(scene));
}

bool HasSettings(const Case& one)
{
    return std::any_of(one.in.begin(), one.in.end(), [](const auto& file) {
        return kiv::LowerCase(file.first).starts_with("c:\\utils\\");
    });
}

void AddCase(Seeds& seeds, const Case& one)
{
    static const std::map<std::string, void (*)(Seeds&, const Case&)> by_command = {
        {"build", AddSite},    {"group", AddSite},        {"sitemap", AddSite},
        {"check", AddSite},    {"grab", AddSite},         {"news", AddNews},
        {"convert", AddTexts}, {"fix-names", AddNames},   {"thumb-names", AddNames},
        {"rename", AddNames},  {"undo-renames", AddNames}};
    Words arguments = one.arguments;
    std::transform(arguments.begin(), arguments.end(), arguments.begin(), kiv::ToUtf8);
    seeds.Add("arguments", Joined(arguments, kBetweenParts));
    for (const std::string& word : one.arguments)
        if (const auto found = by_command.find(word); found != by_command.end())
            found->second(seeds, one);
    AddBlocks(seeds, one);
    if (HasSettings(one))
        seeds.Add("settings", SceneText(SceneOf(one, "")));
    if (one.arguments.front() == "pictures")
        seeds.Add("pictures", SceneText(SceneOf(one, "")));
}

void AddFile(Seeds& seeds, const fs::path& path)
{
    if (path.extension() == ".cases" || path.extension() == ".txt") {
        for (const Case& one : kiv::test::ReadCaseFile(path.string()))
            AddCase(seeds, one);
        return;
    }
    const Scene scene{"", {{path.filename().string(), kiv::test::ReadBytes(path)}}};
    seeds.Add("pictures", SceneText(scene));
}

} // namespace

int main(int count, char** arguments)
{
    const std::vector<std::string> words(arguments + 1, arguments + count);
    Seeds seeds(words.at(0));
    for (auto file = words.begin() + 1; file != words.end(); ++file)
        AddFile(seeds, *file);
    seeds.WriteLists();
}
