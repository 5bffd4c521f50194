#include <TovrelTesting/BackEnd/BackEndFixture.hpp>

#include <fmt/format.h>

#include <cstdio>
#include <filesystem>
#include <fstream>

namespace tovrel::testing {

/// The way a host application's own tests may use the back end: any client, told whom to trust and where to connect.
class LocalBackEndForCommandLineClient : public BackEndFixture {
protected:
    void SetUp() override {
        LocalBackEndOptions options;
        options.hostNames = {"api.example"};
        startWith(options);
        authorityFile =
            std::filesystem::temp_directory_path() / fmt::format("tovrel-authority-{}.pem", backEnd->port());
        std::ofstream(authorityFile) << backEnd->certificateAuthorityPem();
    }

    void TearDown() override {
        std::filesystem::remove(authorityFile);
        BackEndFixture::TearDown();
    }

    std::string curl(const std::string& arguments) const {
        const std::string command = fmt::format("curl --silent --max-time 10 --noproxy '*' --cacert {} --connect-to "
                                                "api.example:443:127.0.0.1:{} {}",
                                                authorityFile.string(), backEnd->port(), arguments);
        const std::unique_ptr<std::FILE, int (*)(std::FILE*)> pipe(::popen(command.c_str(), "r"), &::pclose);
        std::string output;
        std::array<char, 4096> buffer{};
        for (std::size_t count = 1; count > 0;) {
            count = std::fread(buffer.data(), 1, buffer.size(), pipe.get());
            output.append(buffer.data(), count);
        }
        return output;
    }

    std::filesystem::path authorityFile;
};

TEST_F(LocalBackEndForCommandLineClient, AnswersOverHTTP1) {
    EXPECT_EQ(curl("--http1.1 -w ' %{http_version} %{http_code}' https://api.example/hello"), "Hello, world 1.1 200");
}

TEST_F(LocalBackEndForCommandLineClient, AnswersOverHTTP2) {
    EXPECT_EQ(curl("--http2 -w ' %{http_version} %{http_code}' https://api.example/hello"), "Hello, world 2 200");
}

TEST_F(LocalBackEndForCommandLineClient, HasTheKeyOfItsPin) {
    EXPECT_EQ(curl("--pinnedpubkey sha256//" + backEnd->keyPin() + " https://api.example/hello"), "Hello, world");
    EXPECT_EQ(curl("--pinnedpubkey sha256//" + std::string(43, 'A') + "= https://api.example/hello; echo $?"), "90\n");
}

TEST_F(LocalBackEndForCommandLineClient, ReceivesAForm) {
    EXPECT_EQ(curl("-d grant_type=password -d scope=a%20b https://api.example/echo"),
              "grant_type=password&scope=a%20b");
    ASSERT_EQ(backEnd->requests().size(), 1U);
    EXPECT_EQ(backEnd->requests()[0].header("Content-Type"), "application/x-www-form-urlencoded");
}

TEST_F(LocalBackEndForCommandLineClient, MakesAFaultVisibleAsAnExitCode) {
    backEnd->inject(Fault::close(FaultPoint::responseBody));
    EXPECT_EQ(curl("--http1.1 https://api.example/hello; echo $?"), "Hello,18\n");
}

} // namespace tovrel::testing
