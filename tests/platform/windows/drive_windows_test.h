// The drives of Windows for tests: a drive C in a folder, and the machine's own.
#pragma once

#include "platform/windows/api.h"
#include "platform/windows/handle.h"
#include "tests/platform/drive_test.h"

#include <memory>
#include <string>

namespace kiv {

/// The test's folder twice: as drive C and, by `machine`, as it lies on the machine's own drives.
class DriveWindows : public DriveTest {
  protected:
    /// A file held open as another program would.
    WindowsHandle Hold(const std::string& name, DWORD shared) const
    {
        return WindowsHandle(::CreateFileW(Native(name).c_str(), GENERIC_READ, shared, nullptr,
                                           OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    }

    DWORD Attributes(const std::string& name) const
    {
        return ::GetFileAttributesW(Native(name).c_str());
    }

    /// The root as a drive path of the machine.
    std::string MachineRoot() const { return machine->FromNative(root); }

    std::unique_ptr<Drives> machine = MakeDriveFiles({});
};

} // namespace kiv
