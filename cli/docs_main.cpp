// Writes what the installation brings for the user's shell: kiv-cli-docs FILE, where the name of
// the file says what.
#include "cli/docs.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string_view>

namespace {

struct Document {
    std::string_view file;
    std::string (*text)();
};
constexpr std::array kDocuments = std::to_array<Document>({
    {"kiv-cli.1", kiv::ManualPage},
    {"kiv.1", kiv::WindowManualPage},
    {"kiv-cli.bash", kiv::BashCompletion},
    {"_kiv-cli", kiv::ZshCompletion},
    {"kiv-cli.fish", kiv::FishCompletion},
});

const Document* DocumentOf(const std::filesystem::path& file)
{
    for (const Document& document : kDocuments)
        if (file.filename() == document.file)
            return &document;
    return nullptr;
}

} // namespace

int main(int count, char** arguments)
{
    const Document* const document = count == 2 ? DocumentOf(arguments[1]) : nullptr;
    if (document == nullptr) {
        std::cerr << "usage: kiv-cli-docs FILE, which is named\n";
        for (const Document& row : kDocuments)
            std::cerr << "  " << row.file << '\n';
        return 2;
    }
    std::ofstream file(arguments[1], std::ios::binary);
    file << document->text() << std::flush;
    if (!file) {
        std::cerr << "cannot write " << arguments[1] << '\n';
        return 1;
    }
    return 0;
}
