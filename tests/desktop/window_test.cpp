// window_tests NAME [what Qt Test takes …]: nothing of the user's is touched.
#include "tests/desktop/window_test.h"

#include <QApplication>
#include <QSettings>
#include <QTemporaryDir>

#include <cstdio>
#include <string_view>

namespace kiv {

const WindowTest* WindowTest::Named(const char* name)
{
    const WindowTest* test = first;
    while (test != nullptr && std::string_view(test->name_) != name)
        test = test->next_;
    return test;
}

namespace {

int RunWindowTest(const WindowTest& test, int count, char** arguments)
{
#ifndef Q_OS_WIN // which always has a display
    // Before the application is there, which would look for one.
    qputenv("QT_QPA_PLATFORM", "offscreen");
#endif
    const QTemporaryDir settings;
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settings.path());
    QApplication application(count, arguments);
    QCoreApplication::setOrganizationName(QStringLiteral("kiv"));
    QCoreApplication::setApplicationName(QStringLiteral("kiv"));
    const std::unique_ptr<QObject> object = test.Make();
    return QTest::qExec(object.get(), count, arguments);
}

} // namespace

} // namespace kiv

int main(int count, char** arguments)
{
    const kiv::WindowTest* const test = count > 1 ? kiv::WindowTest::Named(arguments[1]) : nullptr;
    if (test == nullptr) {
        std::fputs("The first argument names a test of tests/desktop/CMakeLists.txt.\n", stderr);
        return 2;
    }
    // Qt Test takes the rest.
    arguments[1] = arguments[0];
    return kiv::RunWindowTest(*test, count - 1, arguments + 1);
}
