#include "builder/source_file.h"

#include "platform/run_error.h"
#include "text/text.h"

namespace kiv {

bool SourceFile::AtEnd() const
{
    RequireOpen();
    return rest_.empty();
}

std::string_view SourceFile::Next()
{
    if (AtEnd())
        throw RunError(ErrorKind::end_of_file, "read past the end of " + name_);
    const std::string_view line = TakeLine(rest_);
    ++line_;
    reporter_.place = Place{&name_, line_, nullptr};
    return line;
}

void SourceFile::RequireOpen() const
{
    if (!open_)
        throw RunError(ErrorKind::file, name_ + " was closed before its end was found");
}

} // namespace kiv
