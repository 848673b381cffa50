// Pages that a build has put through a template before: they have its mark, so one can be found
// that gives them back.
#pragma once

#include "exchange/menu_forms.h"
#include "exchange/shared_runs.h"

#include <cstddef>
#include <string>
#include <vector>

namespace kiv {

/// What a page keeps for itself when it goes through the template.
struct FittedPage {
    bool fits = false;
    std::size_t first = 0; // line of its text, from 0
    std::size_t end = 0;
    std::vector<std::string> directives; // lines of the list
};

struct TemplateFit {
    std::vector<std::string> head; // lines of the template
    std::string mark;              // as the pages have it
    std::vector<std::string> tail;
    std::vector<FittedPage> pages; // one for each
    std::vector<CodedLine> coded;  // what head and tail are made of
};

/// The template that most of the pages with a mark come from. `pages` are all of a list, in its
/// order. No page fits where there are not two of them, or where fewer than half of them would.
TemplateFit FitTemplate(const std::vector<ComparedPage>& pages, MenuForms& menus);

} // namespace kiv
