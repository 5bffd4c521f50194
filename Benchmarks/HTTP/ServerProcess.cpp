#include <cstdlib>
#include <fstream>
#include <Harness/Processes.hpp>
#include <HTTP/ServerProcess.hpp>
#include <signal.h>
#include <sstream>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace tovrel::benchmarks {

namespace {

std::string temporaryFile(const std::string& text) {
    char name[] = "/tmp/tovrel-benchmarks-XXXXXX";
    const int descriptor = mkstemp(name);
    if (descriptor < 0) {
        throw std::runtime_error("no temporary file");
    }
    close(descriptor);
    std::ofstream(name) << text;
    return name;
}

} // namespace

ServerProcess::ServerProcess() {
    pinToCore(Core::first);
    Child child = startSelf({"serve"}, Core::last);
    process_ = child.process;
    input_ = child.input;
    std::istringstream greeting(readAll(child.output));
    std::uint16_t http2Port = 0;
    if (!(greeting >> http1_.port >> http2Port)) {
        throw std::runtime_error("the server did not start");
    }
    std::ostringstream certificates;
    certificates << greeting.rdbuf();
    certificateFile_ = temporaryFile(certificates.str());
    http1_.certificateFile = certificateFile_;
    http2_ = http1_;
    http2_.isHTTP2 = true;
    http2_.port = http2Port;
}

ServerProcess::~ServerProcess() {
    close(input_);
    waitpid(process_, nullptr, 0);
    unlink(certificateFile_.c_str());
}

} // namespace tovrel::benchmarks
