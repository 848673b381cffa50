// Calls of `kiv-cli` on a drive C: of the test's own.
#pragma once

#include "cli/run_cli.h"
#include "tests/support/folders.h"
#include "tests/support/json.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace kiv {

class CliTest : public testing::Test, public test::DriveFolder {
  protected:
    using Json = test::Json;
    using Texts = std::vector<std::string>;

    struct Printed {
        int code = 0;
        std::string out;
        std::string err;
    };

    /// A call as it is, with no drive set.
    Printed CallBare(const Texts& arguments)
    {
        std::istringstream in(input);
        std::ostringstream out;
        std::ostringstream err;
        const CliSurroundings around{in,
                                     out,
                                     err,
                                     err_is_terminal,
                                     [this](const char* name) {
                                         const auto set = variables.find(name);
                                         return set == variables.end() ? std::nullopt
                                                                       : std::optional(set->second);
                                     },
                                     out_is_terminal,
                                     nullptr,
                                     shell_folder,
                                     stop};
        const int code = RunCli(arguments, around);
        return {code, out.str(), err.str()};
    }

    /// A call with drive C:.
    Printed Call(const Texts& arguments)
    {
        Texts all = {"--drive-c", Root().string()};
        all.insert(all.end(), arguments.begin(), arguments.end());
        return CallBare(all);
    }

    /// The report of a call; nothing may stand beside it.
    Json Report(const Texts& arguments)
    {
        Texts all = {"--json"};
        all.insert(all.end(), arguments.begin(), arguments.end());
        const Printed printed = Call(all);
        EXPECT_EQ(printed.err, "");
        Json report = Json::Parse(printed.out);
        EXPECT_EQ(printed.code == 1, !report["error"].IsNull());
        return report;
    }

    /// The native path of what lies below drive C:, "site/a.txt".
    std::string NativeOf(const std::string& below) const
    {
        return Native(below).make_preferred().string();
    }

    static std::string KindOf(const Json& report)
    {
        const Json error = report["error"];
        return error.IsNull() ? "" : error["kind"].Text();
    }

    std::string input;
    bool out_is_terminal = false;
    bool err_is_terminal = false;
    std::string shell_folder; // native; "": the process's
    std::map<std::string, std::string> variables;
    StopRequest* stop = nullptr; // ends a command that goes on
};

} // namespace kiv
