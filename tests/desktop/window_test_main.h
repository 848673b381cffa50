// The main program of a window test: nothing of the user's is touched.
#pragma once

#include <QApplication>
#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

namespace kiv {

/// Runs the test object of type `Test`. No display is needed.
template <typename Test>
int RunWindowTest(int count, char** arguments)
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
    Test test;
    return QTest::qExec(&test, count, arguments);
}

} // namespace kiv
