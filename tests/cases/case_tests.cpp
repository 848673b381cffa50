// Makes a test of every case in every case file of a folder.
#include "tests/cases/case_file.h"
#include "tests/cases/case_run.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <stdexcept>

namespace {

using kiv::test::Case;

class CaseTest : public testing::Test {
  public:
    explicit CaseTest(Case one) : case_(std::move(one)) {}

    void TestBody() override
    {
#ifdef _WIN32
        if (!case_.not_on_windows.empty())
            GTEST_SKIP() << case_.not_on_windows;
#endif
        const std::string differences = kiv::test::RunCase(case_);
        EXPECT_TRUE(differences.empty()) << case_.place << ": " << case_.title << "\n"
                                         << differences;
    }

  private:
    Case case_;
};

/// A title as a test name: "a b" becomes "a_b"; the line number keeps names apart.
std::string TestName(const Case& one)
{
    std::string name = one.place.substr(one.place.find(':') + 1) + "_" + one.title;
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
    return name;
}

/// Whether a filter may let a case of this file through. One that names its subject, "tables.*",
/// spares the reading of all other files, which takes longer than the cases of most.
bool IsAskedFor(const std::filesystem::path& path)
{
    const std::string filter = testing::GTEST_FLAG(filter);
    const std::string subject = filter.substr(0, filter.find('.'));
    const bool is_one_file =
        filter == subject + ".*" && subject.find_first_of("*?:-") == std::string::npos;
    return !is_one_file || path.stem() == subject;
}

void RegisterFile(const std::filesystem::path& path)
{
    for (const Case& one : kiv::test::ReadCaseFile(path.string()))
        testing::RegisterTest(path.stem().string().c_str(), TestName(one).c_str(), nullptr, nullptr,
                              path.string().c_str(), 1,
                              [one]() -> testing::Test* { return new CaseTest(one); });
}

} // namespace

int main(int count, char** arguments)
{
    testing::InitGoogleTest(&count, arguments);
    try {
        std::vector<std::filesystem::path> files;
        for (const auto& entry : std::filesystem::directory_iterator(KIV_CASES))
            if (entry.path().extension() == KIV_CASE_EXTENSION && IsAskedFor(entry.path()))
                files.push_back(entry.path());
        std::sort(files.begin(), files.end());
        for (const std::filesystem::path& file : files)
            RegisterFile(file);
    } catch (const std::exception& error) {
        std::cerr << error.what() << "\n";
        return 1;
    }
    return RUN_ALL_TESTS();
}
