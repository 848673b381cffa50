#include "watch_process.h"

#include <csignal>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kiv::test {

class CliProcess::Child {
  public:
    Child(const DriveFolder& drive, std::vector<std::string>& arguments, int own_out)
    {
        std::vector<char*> words;
        for (std::string& word : arguments)
            words.push_back(word.data());
        words.push_back(nullptr);
        const std::string out = drive.Native("out").string();
        const std::string err = drive.Native("err").string();
        id_ = ::fork();
        if (id_ != 0)
            return;
        ::dup2(own_out >= 0 ? own_out : ::open(out.c_str(), O_WRONLY | O_APPEND), STDOUT_FILENO);
        ::dup2(::open(err.c_str(), O_WRONLY | O_APPEND), STDERR_FILENO);
        std::signal(SIGINT, SIG_DFL); // a shell's background jobs ignore it
        std::signal(SIGHUP, SIG_DFL); // as do the programs that nohup starts
        ::execv(words[0], words.data());
        ::_exit(127);
    }

    int End(int signal) const
    {
        int state = 0;
        ::kill(id_, signal); // 0 is none
        ::waitpid(id_, &state, 0);
        return WIFEXITED(state) ? WEXITSTATUS(state) : 1000 + WTERMSIG(state);
    }

  private:
    pid_t id_;
};

namespace {

int SignalOf(Ending ending)
{
    switch (ending) {
    case Ending::own:
        break;
    case Ending::interrupted:
        return SIGINT;
    case Ending::terminated:
        return SIGTERM;
    case Ending::hung_up:
        return SIGHUP;
    case Ending::killed:
        return SIGKILL;
    }
    return 0;
}

} // namespace

CliProcess::CliProcess(const DriveFolder& drive, const std::vector<std::string>& arguments,
                       int own_out)
    : drive_(drive)
{
    drive.Put("out");
    drive.Put("err");
    std::vector<std::string> all = {KIV_CLI, "--drive-c", drive.Root().string()};
    all.insert(all.end(), arguments.begin(), arguments.end());
    child_ = std::make_unique<Child>(drive, all, own_out);
}

CliProcess::~CliProcess()
{
    if (child_)
        End(Ending::killed);
}

int CliProcess::End(Ending ending)
{
    const std::unique_ptr<Child> child = std::move(child_);
    return child->End(SignalOf(ending));
}

} // namespace kiv::test
