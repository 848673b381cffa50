// A program that was built without a writer of XML.
#include "exchange/xml_text.h"

#include "platform/run_error.h"

namespace kiv {

std::string XmlText(const XmlElement& /*root*/, std::string_view /*remark*/)
{
    throw RunError(ErrorKind::file, "this program was built without a writer of XML", {},
                   "Use a program that was built with pugixml.");
}

} // namespace kiv
