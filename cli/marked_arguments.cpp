#include "cli/marked_arguments.h"

#include "cli/call_definitions.h"

#include <cstddef>
#include <utility>

namespace kiv {

namespace {

bool TakesValue(const CLI::Option& option)
{
    return option.get_items_expected_max() > 0;
}

const CLI::App* CommandOf(const CLI::App& app, const std::string& name)
{
    const std::vector<const CLI::App*> found =
        app.get_subcommands([&](const CLI::App* command) { return command->get_name() == name; });
    return found.empty() ? nullptr : found[0];
}

class Marking {
  public:
    Marking(const CLI::App& app, const std::vector<std::string>& arguments)
        : app_(app), given_(arguments)
    {
        marked_.command = &app;
    }

    MarkedArguments Mark()
    {
        for (at_ = 0; at_ < given_.size(); ++at_) {
            const std::string& argument = given_[at_];
            if (argument == "--" && !options_ended_)
                options_ended_ = true;
            else if (IsOption(argument))
                TakeOption(argument);
            else if (marked_.command == &app_)
                TakeCommand(argument);
            else
                TakeValue(argument);
        }
        AddDirectoryLeftOut();
        return std::move(marked_);
    }

  private:
    bool IsOption(const std::string& argument) const
    {
        if (options_ended_)
            return false;
        if (argument == "-h" || argument == "--help" || argument == "--version")
            return true;
        // The fields of this one are values whatever they begin with, and it has no other options.
        if (marked_.command->get_name() == "dimensions")
            return false;
        return argument.starts_with("--");
    }

    void TakeOption(const std::string& argument)
    {
        if (argument == "-h" || argument == "--help") {
            marked_.wants_help = true;
            return;
        }
        if (argument == "--version") {
            marked_.wants_version = true;
            return;
        }
        const std::size_t equals = argument.find('=');
        const std::string name = argument.substr(0, equals);
        const CLI::Option* const option = marked_.command->get_option_no_throw(name);
        if (option == nullptr) {
            Fault(WhereItBelongs(name));
            return;
        }
        marked_.arguments.push_back(name);
        if (!TakesValue(*option)) {
            if (equals != std::string::npos)
                Fault(name + " takes no value");
        } else if (equals != std::string::npos) {
            marked_.arguments.push_back(kValueMark + argument.substr(equals + 1));
        } else if (at_ + 1 < given_.size()) {
            marked_.arguments.push_back(kValueMark + given_[++at_]);
        } else {
            Fault(name + " needs a value");
        }
    }

    /// What is to be said of an option that the command, or the program, does not have.
    std::string WhereItBelongs(const std::string& name) const
    {
        const auto has_it = [&](const CLI::App* app) {
            return app->get_option_no_throw(name) != nullptr;
        };
        if (has_it(&app_))
            return name + " stands before the command";
        if (marked_.command == &app_ && !app_.get_subcommands(has_it).empty())
            return name + " stands behind its command";
        return "there is no option " + name;
    }

    /// Keeps the first fault.
    void Fault(std::string sentence)
    {
        if (marked_.fault.empty())
            marked_.fault = std::move(sentence);
    }

    void TakeCommand(const std::string& argument)
    {
        const CLI::App* const command = CommandOf(app_, argument);
        if (command != nullptr) {
            marked_.command = command;
            marked_.arguments.push_back(argument);
        } else if (marked_.unknown_command.empty()) {
            marked_.unknown_command = argument;
        }
    }

    void TakeValue(const std::string& argument)
    {
        if (values_++ == 0)
            first_value_ = marked_.arguments.size();
        marked_.arguments.push_back(kValueMark + argument);
    }

    /// "rename FIND REPLACEMENT": the first of three may be left out, though the others may not.
    void AddDirectoryLeftOut()
    {
        std::size_t required = 0;
        bool first_may_be_left_out = false;
        bool is_first = true;
        for (const CLI::Option* option : marked_.command->get_options()) {
            if (!option->get_positional())
                continue;
            if (is_first)
                first_may_be_left_out = !option->get_required();
            is_first = false;
            if (option->get_required())
                ++required;
        }
        if (first_may_be_left_out && required > 0 && values_ == required)
            marked_.arguments.insert(marked_.arguments.begin() +
                                         static_cast<std::ptrdiff_t>(first_value_),
                                     std::string(1, kValueMark) + ".");
    }

    const CLI::App& app_;
    const std::vector<std::string>& given_;
    MarkedArguments marked_;
    std::size_t at_ = 0;
    std::size_t values_ = 0;
    std::size_t first_value_ = 0;
    bool options_ended_ = false;
};

} // namespace

MarkedArguments MarkArguments(const CLI::App& app, const std::vector<std::string>& arguments)
{
    return Marking(app, arguments).Mark();
}

} // namespace kiv
