// Where the page list defines what its pages use, for the trace.
#pragma once

#include "builder/page_record.h"
#include "builder/trace.h"

#include <array>
#include <map>
#include <string>
#include <utility>

namespace kiv {

/// What a directive sets, of a page or of the site.
enum class PageField {
    file,
    title,
    mode,
    keywords,
    description,
    id,
    group,
    var1,
    var2,
    noindex,
    root,
};

struct Definition {
    SourceSpan place; // no file: there is none
    std::string text; // the lines there
};

class Definitions {
  public:
    Definition& Variable(Family family, int slot)
    {
        return variables_[static_cast<std::size_t>(family)][static_cast<std::size_t>(slot)];
    }
    /// Of a page, by its number; the site's root belongs to page 0.
    Definition& Field(int page, PageField field) { return fields_[{page, field}]; }

  private:
    std::array<std::array<Definition, 10>, 7> variables_;
    std::map<std::pair<int, PageField>, Definition> fields_;
};

} // namespace kiv
