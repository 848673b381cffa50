// One program holds the window tests, so that the windows are linked once. It runs the one that is
// named.
#pragma once

#include <QObject>
#include <QTest>

#include <memory>

namespace kiv {

/// A test's place in the list of all; it must outlive main.
class WindowTest {
  public:
    using Maker = std::unique_ptr<QObject> (*)();

    WindowTest(const char* name, Maker make) noexcept : name_(name), make_(make), next_(first)
    {
        first = this;
    }

    /// The test of this name; null: there is none.
    static const WindowTest* Named(const char* name);
    /// Makes the object whose slots are the tests.
    std::unique_ptr<QObject> Make() const { return make_(); }

  private:
    static inline const WindowTest* first = nullptr;
    const char* name_;
    Maker make_;
    const WindowTest* next_;
};

/// Each file has one of its class, under the name that the CMakeLists.txt gives.
template <typename Test>
class WindowTestOf : public WindowTest {
  public:
    explicit WindowTestOf(const char* name) noexcept
        : WindowTest(name, []() -> std::unique_ptr<QObject> { return std::make_unique<Test>(); })
    {
    }
};

} // namespace kiv
