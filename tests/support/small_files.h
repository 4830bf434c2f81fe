#pragma once

#include <sys/resource.h>

#include <csignal>

namespace orvane::test {

// While it stands, the system refuses files longer than these bytes, as a full disk does.
class SmallFiles {
public:
    explicit SmallFiles(rlim_t longest) : oldAction(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &oldLimit);
        rlimit limit = oldLimit;
        limit.rlim_cur = longest;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~SmallFiles() {
        setrlimit(RLIMIT_FSIZE, &oldLimit);
        std::signal(SIGXFSZ, oldAction);
    }
    SmallFiles(const SmallFiles&) = delete;
    SmallFiles& operator=(const SmallFiles&) = delete;

private:
    rlimit oldLimit = {};
    void (*oldAction)(int);
};

}  // namespace orvane::test
