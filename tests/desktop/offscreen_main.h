// The main program of a window test: no display is needed, and nothing of the user's is touched.
#pragma once

#include <QApplication>
#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

namespace kiv {

/// Runs the test object of type `Test`.
template <typename Test>
int RunOffscreen(int count, char** arguments)
{
    // Before the application is there, which would look for a display.
    qputenv("QT_QPA_PLATFORM", "offscreen");
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
