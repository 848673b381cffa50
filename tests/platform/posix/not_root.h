// Tests of rights, which root does not feel.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

namespace kiv {

/// While it lives, root, who may write everything, is somebody else.
class NotRoot {
  public:
    NotRoot()
    {
        if (was_root_) {
            EXPECT_EQ(seteuid(65534), 0);
        }
    }
    NotRoot(const NotRoot&) = delete;
    NotRoot& operator=(const NotRoot&) = delete;
    ~NotRoot()
    {
        if (was_root_) {
            EXPECT_EQ(seteuid(0), 0);
        }
    }

  private:
    bool was_root_ = geteuid() == 0;
};

} // namespace kiv
