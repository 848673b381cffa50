// What commands have to tell, as one list: for a face that shows it.
#pragma once

#include "inspect/finding.h"
#include "platform/reporter.h"
#include "platform/run_error.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

class Workspace;

class MessageList {
  public:
    /// After each command: its warnings, the findings of a check, the error that ended it. A build
    /// or a check begins the list anew; what other commands tell stands behind what is there, each
    /// once. Returns whether this command had anything to tell.
    bool FollowCommand(const Workspace& workspace, const std::vector<Warning>& warnings,
                       const std::optional<RunError>& error);

    const std::vector<Finding>& Messages() const { return messages_; }

  private:
    void Add(Finding message);

    std::vector<Finding> messages_;
};

/// "_html.txt:12", or what of it there is: the file as one says it in `folder`, which ends in "\".
std::string ShownPlace(const KeptPlace& where, std::string_view folder);

} // namespace kiv
