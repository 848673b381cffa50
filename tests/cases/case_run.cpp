#include "tests/cases/case_run.h"

#include "cli/run_cli.h"
#include "tests/cases/traced_build.h"
#include "tests/support/folders.h"
#include "tests/support/json.h"
#include "text/windows1252.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <sstream>

namespace kiv::test {

namespace {

namespace fs = std::filesystem;

/// The C folder of one case.
class CaseFolder {
  public:
    CaseFolder()
    {
        fs::create_directories(Root() / "site");
        fs::create_directories(Root() / "utils");
    }

    const fs::path& Root() const { return folder_.Path(); }

    /// The name of a case as a path below the C folder, "site/sub/a.htm".
    static std::string Below(const std::string& name)
    {
        std::string path = ToUtf8(name);
        for (char& c : path)
            if (c == '\\')
                c = '/';
        const bool drive = path.size() > 2 && path[1] == ':';
        return drive ? path.substr(3) : "site/" + path;
    }

  private:
    TemporaryFolder folder_;
};

class CaseRun {
  public:
    explicit CaseRun(const Case& one) : case_(one) {}

    std::string Run()
    {
        LayOut();
        const TracedBuild traced(case_, folder_.Root());
        for (const Case::Question& question : case_.questions)
            Ask(question);
        Call();
        if (differences_.str().empty()) {
            CompareReport();
            CompareFiles();
            differences_ << traced.Differences(Texts((*report_)["messages"]),
                                               Texts((*report_)["files"]));
        }
        if (case_.findings && differences_.str().empty())
            CompareMended();
        return differences_.str();
    }

  private:
    void LayOut()
    {
        FileTree in = case_.in;
        if (!in.contains("_template.txt") && !case_.absent.contains("_template.txt"))
            in["_template.txt"] = ";\n";
        for (const auto& [name, bytes] : in)
            before_[CaseFolder::Below(name)] = bytes;
        for (const auto& [below, bytes] : before_)
            WriteBytes(folder_.Root() / PathOf(below), bytes);
        for (const std::string& name : case_.folders)
            fs::create_directories(folder_.Root() / PathOf(CaseFolder::Below(name)));
    }

    /// What a call has given.
    struct Outcome {
        int code;
        std::string out;
        std::string err;
    };

    Outcome RunWith(const std::vector<std::string>& more) const
    {
        std::vector<std::string> arguments = {"--drive-c", folder_.Root().string(), "--now",
                                              "2004-03-05T14:07:09"};
        for (const std::string& argument : more)
            arguments.push_back(ToUtf8(argument));
        std::istringstream in(ToUtf8(case_.standard_input.value_or("")));
        std::ostringstream out;
        std::ostringstream err;
        CliSurroundings around{in, out, err, false,
                               [](const char*) { return std::optional<std::string>(); }};
        around.directory = (folder_.Root() / "site").string();
        const int code = RunCli(arguments, around);
        return {code, out.str(), err.str()};
    }

    void Call()
    {
        std::vector<std::string> arguments = case_.arguments;
        arguments.insert(arguments.begin(), "--json");
        const Outcome outcome = RunWith(arguments);
        if (outcome.code != ExpectedCode())
            differences_ << "exit code " << outcome.code << "\n" << outcome.err << outcome.out;
        else
            report_ = Json::Parse(outcome.out);
    }

    /// What findings make of it is told by the expected ones, as long as the call does not say
    /// from which on it fails.
    int ExpectedCode() const
    {
        if (!case_.error.empty())
            return 1;
        const auto is_error = [](const std::string& finding) {
            return finding.find(" error ") < finding.find(": ");
        };
        return case_.findings && std::ranges::any_of(*case_.findings, is_error) ? 3 : 0;
    }

    /// The site with its faults mended, in which nothing is found.
    void CompareMended()
    {
        if (case_.mends.empty())
            return;
        for (const auto& [name, bytes] : case_.mends)
            WriteBytes(folder_.Root() / PathOf(CaseFolder::Below(name)), bytes);
        std::vector<std::string> arguments = case_.arguments;
        arguments.insert(arguments.begin(), "--json");
        report_ = Json::Parse(RunWith(arguments).out);
        Compare("findings of the mended site", {}, Findings());
    }

    /// The findings of the report as case files have them.
    std::vector<std::string> Findings() const
    {
        std::vector<std::string> lines;
        for (const Json& finding : (*report_)["findings"].Items()) {
            const auto text = [&](const char* key) {
                return finding[key].IsNull() ? "" : FromUtf8(finding[key].Text());
            };
            std::string line = text("file");
            if (line.starts_with("C:\\site\\"))
                line.erase(0, std::string_view("C:\\site\\").size());
            if (!finding["line"].IsNull())
                line += ":" + finding["line"].Dump();
            line += " " + text("severity") + " " + text("name") + ": " + text("text");
            if (!finding["page"].IsNull())
                line += " (page " + text("page") + ")";
            if (!finding["suggestion"].IsNull())
                line += " -> " + text("suggestion");
            lines.push_back(line);
        }
        return lines;
    }

    void Ask(const Case::Question& question)
    {
        std::vector<std::string> arguments = {"why", "C:\\site"};
        arguments.insert(arguments.end(), question.arguments.begin(), question.arguments.end());
        const Outcome outcome = RunWith(arguments);
        std::vector<std::string> printed;
        std::istringstream lines(FromUtf8(outcome.out + outcome.err));
        for (std::string line; std::getline(lines, line);)
            printed.push_back(line);
        Compare("why " + question.arguments.back(), question.answer,
                WithoutBlankEnds(std::move(printed)));
    }

    static std::vector<std::string> Texts(const Json& list)
    {
        std::vector<std::string> texts;
        for (const Json& item : list.Items())
            texts.push_back(FromUtf8(item.Text()));
        return texts;
    }

    void Compare(const std::string& what, const std::vector<std::string>& expected,
                 const std::vector<std::string>& actual)
    {
        if (expected == actual)
            return;
        differences_ << what << ": expected\n";
        for (const std::string& text : expected)
            differences_ << "  [" << Shown(text) << "]\n";
        differences_ << "but got\n";
        for (const std::string& text : actual)
            differences_ << "  [" << Shown(text) << "]\n";
    }

    void CompareReport()
    {
        const Json error = (*report_)["error"];
        const std::string kind = error.IsNull() ? "" : error["kind"].Text();
        Compare("error", {case_.error}, {kind});
        if (case_.where && !error.IsNull())
            Compare("where", {*case_.where}, {FromUtf8(error["where"].Text())});
        if (case_.hint && !error.IsNull())
            Compare("hint", {*case_.hint}, {FromUtf8(error["hint"].Text())});
        Compare("messages", case_.messages, Texts((*report_)["messages"]));
        Compare("launched", case_.launched, Texts((*report_)["launched"]));
        if (case_.status)
            Compare("status", {*case_.status}, {FromUtf8((*report_)["status"].Text())});
        if (case_.files)
            Compare("files", *case_.files, Texts((*report_)["files"]));
        if (!case_.warnings.empty()) {
            std::vector<std::string> warnings;
            for (const Json& warning : (*report_)["warnings"].Items())
                warnings.push_back(FromUtf8(warning["text"].Text()));
            Compare("warnings", case_.warnings, warnings);
        }
        if (case_.result)
            Compare("result", {*case_.result}, {FromUtf8((*report_)["result"].Text())});
        if (case_.findings)
            Compare("findings", *case_.findings, Findings());
        if (case_.renamed) {
            std::vector<std::string> pairs;
            for (const Json& pair : (*report_)["renamed"].Items())
                pairs.push_back(FromUtf8(pair[0].Text() + " -> " + pair[1].Text()));
            Compare("renamed", *case_.renamed, pairs);
        }
    }

    void CompareFiles()
    {
        FileTree expected = before_;
        for (const auto& [name, bytes] : case_.out)
            expected[CaseFolder::Below(name)] = bytes;
        for (const std::string& name : case_.absent)
            expected.erase(CaseFolder::Below(name));
        FileTree actual = ReadTree(folder_.Root());
        // Every build writes these; a case that cares names them.
        for (const char* const name : {"_toc.txt", "_sitemap.txt"})
            for (auto file = actual.begin(); file != actual.end();) {
                const bool left_out =
                    fs::path(file->first).filename() == name && !IsNamed(file->first);
                if (left_out)
                    expected.erase(file->first);
                file = left_out ? actual.erase(file) : std::next(file);
            }
        differences_ << Differences(expected, actual);
    }

    bool IsNamed(const std::string& below) const
    {
        for (const auto& [name, bytes] : case_.out)
            if (CaseFolder::Below(name) == below)
                return true;
        for (const std::string& name : case_.absent)
            if (CaseFolder::Below(name) == below)
                return true;
        return false;
    }

    const Case& case_;
    CaseFolder folder_;
    FileTree before_;
    std::optional<Json> report_;
    std::ostringstream differences_;
};

} // namespace

std::string RunCase(const Case& one)
{
    return CaseRun(one).Run();
}

} // namespace kiv::test
