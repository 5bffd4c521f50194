#include <arpa/inet.h>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <netinet/in.h>
#include <stdexcept>
#include <Support/Nginx.hpp>
#include <sys/socket.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace tovrel::tests {

namespace {

sockaddr_in loopback(std::uint16_t port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    return address;
}

std::uint16_t freePort() {
    const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address = loopback(0);
    socklen_t length = sizeof address;
    const bool isBound = ::bind(socket, reinterpret_cast<sockaddr*>(&address), length) == 0 &&
                         ::getsockname(socket, reinterpret_cast<sockaddr*>(&address), &length) == 0;
    ::close(socket);
    if (!isBound) {
        throw std::runtime_error("no free port");
    }
    return ntohs(address.sin_port);
}

std::filesystem::path temporaryFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "nginx-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) {
        throw std::runtime_error("no temporary folder");
    }
    return pattern;
}

std::string contents(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

std::string configuration(const std::string& folder, std::uint16_t port) {
    return "daemon off; master_process off; pid " + folder + "/pid; error_log " + folder + "/error.log;\n" +
           "events {}\n"
           "http {\n"
           "  access_log off; gzip on; gzip_min_length 1; gzip_types text/plain;\n"
           "  client_body_temp_path " +
           folder + "/body; proxy_temp_path " + folder + "/proxy;\n" + "  fastcgi_temp_path " + folder +
           "/fastcgi; uwsgi_temp_path " + folder + "/uwsgi; scgi_temp_path " + folder + "/scgi;\n" +
           "  server {\n"
           "    listen 127.0.0.1:" +
           std::to_string(port) + " ssl http2; server_name nginx.example;\n" + "    ssl_certificate " + folder +
           "/certificate.pem; ssl_certificate_key " + folder + "/key.pem;\n" + "    root " + folder +
           "/www; default_type text/plain;\n" + "    location /echo { proxy_pass http://unix:" + folder +
           "/echo.sock; proxy_set_header X-Protocol $server_protocol; }\n" +
           "    location /moved { return 301 /echo; }\n"
           "    location /found { return 302 /echo; }\n"
           "    location /other { return 303 /echo; }\n"
           "    location /kept { return 307 /echo; }\n"
           "    location /loop { return 302 /loop; }\n"
           "    location /insecure { return 302 http://nginx.example/echo; }\n"
           "  }\n"
           // Behind a proxy, so that a body is read before the answer is given, as it is with any application.
           "  server {\n"
           "    listen unix:" +
           folder + "/echo.sock; default_type text/plain;\n" +
           "    location / { return 200 \"$request_method $http_x_protocol\"; }\n"
           "  }\n"
           "}\n";
}

} // namespace

Nginx::Nginx() : folder_(temporaryFolder()), port_(freePort()) {
    writeFiles();
    launch();
}

Nginx::~Nginx() {
    if (process_ > 0) {
        ::kill(process_, SIGTERM);
        ::waitpid(process_, nullptr, 0);
    }
    std::filesystem::remove_all(folder_);
}

std::string Nginx::text() {
    std::string lines;
    for (int line = 0; line < 100; ++line) {
        lines += "The same line again and again.\n";
    }
    return lines;
}

std::string Nginx::large() {
    std::string bytes(std::size_t{1} << 20U, '\0');
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        bytes[i] = static_cast<char>('a' + i % 23);
    }
    return bytes;
}

void Nginx::writeFiles() {
    std::filesystem::create_directories(folder_ / "www");
    // The folder is root's in a container, and nginx may give up root's rights.
    std::filesystem::permissions(folder_, std::filesystem::perms::all);
    std::ofstream(folder_ / "www" / "text") << text();
    std::ofstream(folder_ / "www" / "large") << large();
    std::ofstream(folder_ / "nginx.conf") << configuration(folder_.string(), port_);
    const std::string makeCertificate =
        "openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -days 2 -subj /CN=nginx.example "
        "-addext subjectAltName=DNS:nginx.example -keyout '" +
        folder_.string() + "/key.pem' -out '" + folder_.string() + "/certificate.pem' 2>/dev/null";
    if (std::system(makeCertificate.c_str()) != 0) {
        throw std::runtime_error("openssl made no certificate");
    }
    certificatePem_ = contents(folder_ / "certificate.pem");
}

void Nginx::launch() {
    const std::string file = (folder_ / "nginx.conf").string();
    process_ = ::fork();
    if (process_ == 0) {
        ::execlp("nginx", "nginx", "-p", folder_.c_str(), "-c", file.c_str(), static_cast<char*>(nullptr));
        ::execl("/usr/sbin/nginx", "nginx", "-p", folder_.c_str(), "-c", file.c_str(), static_cast<char*>(nullptr));
        ::_exit(127);
    }
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!isListening()) {
        if (std::chrono::steady_clock::now() > deadline || ::waitpid(process_, nullptr, WNOHANG) == process_) {
            throw std::runtime_error("nginx did not start: " + contents(folder_ / "error.log"));
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
}

bool Nginx::isListening() const {
    const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const sockaddr_in address = loopback(port_);
    const bool isConnected = ::connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    ::close(socket);
    return isConnected;
}

} // namespace tovrel::tests
