#include "builder/bang_macros.h"

#include "builder/build_state.h"
#include "platform/run_error.h"
#include "text/joined_text.h"
#include "text/text.h"

#include <string_view>

namespace kiv {

Expansion ExpandShowHide(const BracketUse& use, Build& build)
{
    const Fields fields(use);
    const std::string_view id = fields[1];
    const std::string_view text = fields[2];
    std::string& ids = build.state.page.bangs.ShowHideIds;
    if (!ids.empty())
        ids += ',';
    ids.append("\"").append(id).append("\"");
    // The ";" after onFocus is a slip that pages have always had. The div stays open for the
    // author's "</div>".
    return {Joined({"<a href=\"javascript:void(0)\" class=\"showhide\" onClick=\"displaySubs('", id,
                    "')\" onFocus=\"if(this.blur)this.blur()\";>", text, "</a>\r\n<div id=\"", id,
                    "\" style=\"display:none\">"})};
}

Expansion ExpandFlv(const BracketUse& use, Build& build)
{
    Expansion as_it_stands = {std::string(use.Text())};
    if (!use.is_closed)
        return as_it_stands;
    const Fields fields(use);
    if (fields.Count() < 4) {
        build.messages.ShowBuildMessage("FLV!! is flawed");
        return as_it_stands;
    }
    const Addresses& addresses = build.options.addresses;
    const std::string_view server = fields[1];
    const std::string_view file = fields[2];
    // A server that is neither takes its media from the one and the player from the other. The
    // format wants it so.
    const std::string_view media = EqualsNoCase(server, "mor") ? addresses.mor : addresses.kel;
    const std::string_view player = EqualsNoCase(server, "kel") ? addresses.kel : addresses.mor;
    return {Joined({"<embed flashvars=\"file=", media, file, ".flv&autostart=false&image=", media,
                    file, ".jpg\" src=\"", player, "flvplayer.swf\" width=\"", fields[3],
                    "\" height=\"", fields[4],
                    "\" bgcolor=\"#FFFFFF\" type=\"application/x-shockwave-flash\" pluginspage=\"",
                    addresses.plugin_page, "\">"})};
}

Expansion ExpandMailto(const BracketUse& use, Build&)
{
    const std::string_view address = use.arguments; // "|" means nothing here
    const std::size_t at = address.find('@');
    if (at == npos)
        return {"", false, "an address without \"@\", so nothing is left of it"};
    const std::string_view user = address.substr(0, at);
    const std::string_view host = Before(address.substr(at + 1), '@');
    const std::size_t dot = host.find('.');
    if (dot == npos)
        throw RunError(ErrorKind::subscript,
                       "the address of " + std::string(use.name) + " has no \".\" behind its \"@\"",
                       {}, "Write the whole address, as in \"!!mailto[user@site.org]\".");
    const std::string_view domain = host.substr(0, dot);
    std::string_view tld = host.substr(dot + 1);
    std::string visible; // none in the open form: the author writes the words and the "</a>"
    if (tld.ends_with('!')) {
        tld.remove_suffix(1);
        visible =
            Joined({user, "<!--z-->", "@", "<!--z-->", domain, "<!--z-->.<!--z-->", tld, "</a>"});
    }
    return {Joined({"<a href=\"*\" onmouseover=\"this.href='mailto:", user, "'+'@'+'", domain,
                    "'+'.'+'", tld, "'\">", visible})};
}

Expansion ExpandSwap(const BracketUse& use, Build&)
{
    const Fields fields(use);
    const std::string_view alias = fields[1];
    const std::string_view page = fields[2];
    const std::string_view first_image = fields[3];
    const std::string_view second_image = fields[4];
    return {Joined({"<a href=\"",
                    page,
                    "\" onMouseOver=\"document.image",
                    alias,
                    ".src='",
                    second_image,
                    "'\" onMouseOut=\"document.image",
                    alias,
                    ".src='",
                    first_image,
                    "'\"><img name=\"image",
                    alias,
                    "\" src=\"",
                    first_image,
                    "\" width=\"",
                    fields[5],
                    "\" height=\"",
                    fields[6],
                    "\" border=\"0\" alt=\"",
                    fields[7],
                    "\"></a>"})};
}

Expansion ExpandFlash(const BracketUse& use, Build& build)
{
    const Addresses& addresses = build.options.addresses;
    const Fields fields(use);
    const std::string_view movie = fields[1];
    const std::string_view width = fields[2];
    const std::string_view height = fields[3];
    const std::string object = Joined(
        {"<object width=\"", width, "\" height=\"", height, "\" codebase=\"",
         addresses.plugin_cabinet, "\" classid=\"clsid:d27cdb6e-ae6d-11cf-96b8-444553540000\">"});
    const std::string embed = Joined(
        {"  <embed pluginspage=\"", addresses.plugin_page,
         "\" type=\"application/x-shockwave-flash\" allowscriptaccess=\"sameDomain\" width=\"",
         width, "\" height=\"", height, "\" bgcolor=\"#ffffff\" quality=\"high\" src=\"", movie,
         "\">"});
    const std::string block =
        JoinedLines({object, Joined({"  <param name=\"movie\" value=\"", movie, "\">"}),
                     "  <param name=\"quality\" value=\"high\">",
                     "  <param name=\"allowScriptAccess\" value=\"sameDomain\">",
                     "  <param name=\"bgcolor\" value=\"#ffffff\">", embed, "</object>"});
    return {block};
}

void WriteShowHideScript(std::string& output, PageBangs& page)
{
    if (page.ShowHideIds.empty())
        return;
    output += JoinedLines({
        "<script type=\"text/javascript\">",
        Joined({"var subs_array = new Array(", page.ShowHideIds, ");"}),
        "function displaySubs(the_sub){",
        "   if (document.getElementById(the_sub).style.display==\"\"){",
        "   document.getElementById(the_sub).style.display = \"none\";return",
        "  }",
        "for (i=0;i<subs_array.length;i++){",
        "   var my_sub = document.getElementById(subs_array[i]);",
        "   my_sub.style.display = \"none\";",
        "   }",
        "document.getElementById(the_sub).style.display = \"\";",
        "}",
        "</script>",
        "", // the script is one record that ends in CR LF, so an empty line follows it
        "",
    });
    page.ShowHideIds.clear();
}

} // namespace kiv
