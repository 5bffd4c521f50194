#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <sys/types.h>

namespace tovrel::tests {

/// A real nginx on a free port of 127.0.0.1, with TLS and a certificate of its own for "nginx.example". It lives and
/// dies with this object, as does its folder.
///
/// It serves "/text" (compressed where the client accepts it), "/large" (1 MiB), "/echo" (method and protocol of the
/// request),
/// "/moved", "/found", "/other" and "/kept" (301, 302, 303 and 307 to "/echo"), "/loop", and "/insecure" (to plain
/// http).
class Nginx {
public:
    Nginx();
    ~Nginx();
    Nginx(const Nginx&) = delete;
    Nginx& operator=(const Nginx&) = delete;

    static constexpr const char* host = "nginx.example";

    [[nodiscard]] std::uint16_t port() const { return port_; }
    [[nodiscard]] const std::string& certificatePem() const { return certificatePem_; }

    /// What "/text" and "/large" hold.
    [[nodiscard]] static std::string text();
    [[nodiscard]] static std::string large();

private:
    void writeFiles();
    void launch();
    [[nodiscard]] bool isListening() const;

    std::filesystem::path folder_;
    std::uint16_t port_;
    std::string certificatePem_;
    pid_t process_ = -1;
};

} // namespace tovrel::tests
