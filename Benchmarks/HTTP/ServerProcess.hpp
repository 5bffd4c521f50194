#pragma once

#include <HTTP/HTTPClient.hpp>
#include <string>
#include <sys/types.h>

namespace tovrel::benchmarks {

constexpr std::size_t smallBodySize = 400;
constexpr std::size_t largeBodySize = 10'000'000;

extern const char* const smallPath;
extern const char* const largePath;
/// The small body after half a second, so that requests pile up.
extern const char* const slowPath;

constexpr std::size_t cacheableBodySize = 4096;
extern const char* const cacheablePath;
extern const char* const uncacheablePath;

/// Serves until standard input ends. Writes a line with the ports for HTTP/1.1 and HTTP/2, then the certificates to
/// trust, to standard output.
void serve();

/// The server in a process of its own, where its work counts for nobody, and on a core of its own where there are two.
class ServerProcess {
public:
    /// Also pins the calling process to its core.
    ServerProcess();
    ~ServerProcess();
    ServerProcess(const ServerProcess&) = delete;
    ServerProcess& operator=(const ServerProcess&) = delete;

    const Endpoint& http1() const { return http1_; }
    const Endpoint& http2() const { return http2_; }

private:
    pid_t process_ = 0;
    int input_ = -1;
    std::string certificateFile_;
    Endpoint http1_;
    Endpoint http2_;
};

} // namespace tovrel::benchmarks
