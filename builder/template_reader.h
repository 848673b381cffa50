// Reads `_template.txt` into a head and a tail around "<!--BODY HERE-->".
#pragma once

namespace kiv {

struct Build;

/// Fills TemplateHead, TemplateTail and their counts. Missing files are reported and leave the
/// sections as far as they were filled. Throws `end-of-file` when `_template.txt` is empty and
/// `subscript` past 1000 lines a section.
void ReadTemplate(Build& build);

} // namespace kiv
