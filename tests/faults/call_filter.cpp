#include "faults/call_filter.h"

#include "faults/calls.h"

#include <cstddef>
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <vector>

namespace kiv::faults {

namespace {

using Code = std::vector<sock_filter>;

void Load(Code& code, std::size_t offset)
{
    code.push_back(BPF_STMT(BPF_LD | BPF_W | BPF_ABS, static_cast<unsigned>(offset)));
}

/// Ends with `verdict` when what was loaded equals `value`.
void EndIf(Code& code, unsigned value, unsigned verdict)
{
    code.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, value, 0, 1));
    code.push_back(BPF_STMT(BPF_RET | BPF_K, verdict));
}

Code FilterCode()
{
    Code code;
    Load(code, offsetof(seccomp_data, arch));
    code.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, AUDIT_ARCH_X86_64, 1, 0));
    code.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
    Load(code, offsetof(seccomp_data, nr));
    for (const CallKind& kind : CallKinds())
        if (kind.role != Role::map)
            EndIf(code, static_cast<unsigned>(kind.number), SECCOMP_RET_TRACE);
    // Memory without a file is another attack's.
    code.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_mmap, 1, 0));
    code.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
    constexpr std::size_t kFileArgument = 4;
    Load(code, offsetof(seccomp_data, args) + kFileArgument * sizeof(std::uint64_t));
    EndIf(code, ~0U, SECCOMP_RET_ALLOW);
    code.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_TRACE));
    return code;
}

} // namespace

void StopAtCalls()
{
    static Code code = FilterCode();
    sock_fprog program{static_cast<unsigned short>(code.size()), code.data()};
    if (::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 ||
        ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) != 0)
        ::_exit(126);
}

} // namespace kiv::faults
