// A limit on the size of files, which stands in for a full disk. In force until the end of the scope.
#pragma once

#include <sys/resource.h>

#include <csignal>

namespace corvane {

class FileSizeLimit {
  public:
    explicit FileSizeLimit(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &previous_);
        const rlimit limit{bytes, previous_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &previous_);
        std::signal(SIGXFSZ, handler_);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

  private:
    rlimit previous_{};
    sighandler_t handler_;
};

}  // namespace corvane
