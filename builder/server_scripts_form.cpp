// Server scripts that read a form and make its texts safe.
#include "builder/server_script_generators.h"
#include "text/joined_text.h"
#include "text/text.h"

namespace kiv {

namespace {

constexpr std::string_view kRteSafe = "function RTESafe(strText)\r\n"
                                      "    'returns safe code for outputting to the browser\r\n"
                                      "    dim tmpString\r\n"
                                      "    tmpString = trim(strText)\r\n"
                                      "    'convert single quotes\r\n"
                                      "    tmpString = replace(tmpString, chr(145), chr(39))\r\n"
                                      "    tmpString = replace(tmpString, chr(146), chr(39))\r\n"
                                      "    tmpString = replace(tmpString, \"'\", \"&#39;\")\r\n"
                                      "    'convert double quotes\r\n"
                                      "    tmpString = replace(tmpString, chr(34), \"&quot;\")\r\n"
                                      "    tmpString = replace(tmpString, chr(147), \"&quot;\")\r\n"
                                      "    tmpString = replace(tmpString, chr(148), \"&quot;\")\r\n"
                                      "    'replace less-thans and greater-thans\r\n"
                                      "    tmpString = replace(tmpString, \"<\", \"&lt;\")\r\n"
                                      "    tmpString = replace(tmpString, \">\", \"&gt;\")\r\n"
                                      "    RTESafe = tmpString\r\n"
                                      "end function\r\n";

} // namespace

std::string ScriptFormRead(std::string_view argument, const Addresses&)
{
    std::string reads;
    std::string safes;
    std::string summary = "messageout=\"************************\" + vbCrLf\r\n";
    std::string test;
    for (const std::string_view v : Split(argument, '|')) {
        reads += Joined({v, "=trim(Request.Form(\"", v, "\"))\r\n"});
        safes += Joined({"safe", v, " = RTESafe(", v, ")\r\n"});
        summary += Joined({"messageout=messageout + \"", v, ": \" + ", v, " + vbcrlf\r\n"});
        if (v != "referrer") // the page sets it, so it says nothing of what the visitor wrote
            test += Joined({test.empty() ? "" : "and ", v, "=\"\" "});
    }
    // An empty line follows each group. Two blanks stand before "then". The format wants both so.
    return Joined({"<%\r\n", reads, kCrLf, "email = replace(email, \" \", \"\")\r\n", kCrLf, safes,
                   kCrLf, summary, kCrLf, "if ", test, " then imempty=\"yes\"\r\n", kCrLf, kRteSafe,
                   kCrLf, "%>"});
}

std::string ScriptFixQuotes(std::string_view argument, const Addresses&)
{
    std::string replacements;
    for (const std::string_view v : Split(argument, '|')) {
        replacements += Joined({v, "=Replace(", v, ", \"\"\"\", \"&quot;\")\r\n"});
        replacements += Joined({v, "=Replace(", v, ", \"'\", \"''\")\r\n"});
    }
    return Joined({"<%\r\n", replacements, kCrLf, "%>"});
}

} // namespace kiv
