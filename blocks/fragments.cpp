#include "blocks/fragments.h"

namespace kiv {

std::string zbar(std::string_view width, std::string_view height)
{
    std::string image = R"(<img src="../images/zbar.gif" width=")";
    image.append(width).append(R"(" height=")").append(height).append(R"(" border="0">)");
    return image;
}

} // namespace kiv
