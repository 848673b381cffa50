#include "desktop/application.h"

#include "desktop/main_window.h"
#include "desktop/qt_text.h"
#include "platform/drives.h"
#include "platform/environment.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QIcon>

#include <memory>

namespace kiv {

namespace {

std::optional<std::string> Variable(const char* name)
{
    if (!qEnvironmentVariableIsSet(name))
        return std::nullopt;
    return FromQtNative(qEnvironmentVariable(name));
}

QIcon Icon()
{
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128, 256})
        icon.addFile(QStringLiteral(":/icons/kiv-%1.png").arg(size));
    return icon;
}

/// The native folder of the example site: as it is installed, on Windows and elsewhere, or in the
/// tree that the program was built in. Empty when it is in none of them.
std::string FindExample()
{
    const QDir here(QCoreApplication::applicationDirPath());
    for (const auto* const place :
         {"../share/doc/kiv/examples/museum", "../examples/museum", "../../../examples/museum"}) {
        const QString folder = QDir::cleanPath(here.filePath(QLatin1String(place)));
        if (QFileInfo(folder + QStringLiteral("/site/_html.txt")).isFile())
            return FromQtNative(folder);
    }
    return {};
}

/// The program's argument as a native path, if it has one.
std::optional<std::string> ReadArgument(const QApplication& application)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Builds and maintains static websites from folders of plain text."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("directory"),
                                 QStringLiteral("The directory to start in."),
                                 QStringLiteral("[DIR]"));
    parser.process(application);
    const QStringList arguments = parser.positionalArguments();
    if (arguments.size() > 1)
        parser.showHelp(2);
    if (arguments.isEmpty())
        return std::nullopt;
    return FromQtNative(arguments.front());
}

} // namespace

int RunDesktop(int count, char** arguments)
{
    QApplication application(count, arguments);
    QCoreApplication::setOrganizationName(QStringLiteral("kiv"));
    QCoreApplication::setApplicationName(QStringLiteral("kiv"));
    QCoreApplication::setApplicationVersion(QStringLiteral(KIV_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("kiv"));
    QGuiApplication::setWindowIcon(Icon());
    std::optional<std::string> directory = ReadArgument(application);

    const DriveMap drives = DrivesFrom(Variable);
    MakeDriveC(drives);
    const std::unique_ptr<Drives> files = MakeDriveFiles(drives);
    SystemClock clock;
    SystemPrograms programs(*files);
    HeaderPictureLoader pictures(*files);
    MainWindow window({*files, clock, programs, pictures});
    if (directory)
        directory = files->FromNative(*directory);
    window.workspace().ProgramFolder =
        files->FromNative(FromQtNative(QCoreApplication::applicationDirPath()));
    if (const std::string records = RecordsFolderFrom(Variable); !records.empty())
        window.workspace().RecordsFolder = files->FromNative(records);
    if (const std::string recent = RecentFileFrom(Variable); !recent.empty())
        window.workspace().RecentFile = files->FromNative(recent);
    if (const std::string example = FindExample(); !example.empty())
        window.workspace().ExampleFolder = files->FromNative(example);
    for (const std::string& folder : ProgramFoldersFrom(Variable))
        window.workspace().ProgramFolders.push_back(files->FromNative(folder));
    window.show();
    window.Start(directory);
    return window.isVisible() ? QApplication::exec() : 0;
}

} // namespace kiv
