#include "desktop/application.h"

int main(int count, char** arguments)
{
    return kiv::RunDesktop(count, arguments);
}
