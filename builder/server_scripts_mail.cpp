// Server scripts that send a mail.
#include "builder/arguments.h"
#include "builder/server_script_generators.h"
#include "text/joined_text.h"
#include "text/text.h"

namespace kiv {

namespace {

/// What differs between the two mail objects.
struct MailObject {
    std::string_view directive;
    std::string_view object_line;
    std::string_view reply_to;
    std::string_view body;
};

constexpr MailObject kOlder = {"@SENDEMAIL:", "Set myMail=CreateObject(\"Cdonts.newMail\")",
                               "myMail.value(\"Reply-To\")=", "myMail.Body="};
constexpr MailObject kNewer = {"@SSENDEMAIL:", "Set myMail=CreateObject(\"CDO.Message\")",
                               "myMail.ReplyTo=", "myMail.TextBody="};

std::string InQuotes(std::string_view text)
{
    return Joined({"\"", text, "\""});
}

/// A text as a script literal: its double quotes doubled, the whole in double quotes.
std::string Literal(std::string_view text)
{
    std::string doubled(text);
    ReplaceEach(doubled, "\"", "\"\"");
    return InQuotes(doubled);
}

/// An address is quoted, anything else is the name of a script variable.
std::string AddressOrVariable(std::string_view text)
{
    return Contains(text, "@") ? InQuotes(text) : std::string(text);
}

std::string FromLines(std::string_view from, const MailObject& object, const Addresses& addresses)
{
    if (Contains(from, "@"))
        return "myMail.From=" + InQuotes(from);
    return JoinedLines({"myMail.From=" + InQuotes(addresses.sender),
                        Joined({"if instr(", from, ",\"@\")>0 and instr(", from, ", \" \")=0 then ",
                                object.reply_to, from})});
}

std::string MailScript(std::string_view argument, const MailObject& object,
                       const Addresses& addresses)
{
    const Fields fields(argument, object.directive);
    const std::string_view subject = fields[1];
    const std::string_view from = fields[2];
    const std::string_view to = Before(fields[3], ',');
    const std::string_view cc = FromChar(fields[3], to.size() + 2);
    const std::string_view message = fields[4];
    std::string lines =
        JoinedLines({"<%", object.object_line, "myMail.Subject=spam & " + Literal(subject),
                     FromLines(from, object, addresses), "myMail.To=" + AddressOrVariable(to)});
    if (!cc.empty())
        lines += Joined({kCrLf, "myMail.cc=", AddressOrVariable(cc)});
    // A message of one word is the name of a script variable.
    const std::string body = Contains(message, " ") ? Literal(message) : std::string(message);
    return JoinedLines(
        {lines, Joined({object.body, body}), "myMail.Send", "Set myMail = Nothing", "%>"});
}

} // namespace

std::string ScriptSendEmail(std::string_view argument, const Addresses& addresses)
{
    return MailScript(argument, kOlder, addresses);
}

std::string ScriptSendEmailNewer(std::string_view argument, const Addresses& addresses)
{
    return MailScript(argument, kNewer, addresses);
}

} // namespace kiv
