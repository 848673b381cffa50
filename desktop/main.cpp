#include "desktop/application.h"
#include "platform/process.h"

int main(int count, char** arguments)
{
    kiv::PrepareProcess();
    return kiv::RunDesktop(count, arguments);
}
