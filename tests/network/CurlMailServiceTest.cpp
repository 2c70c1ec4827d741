#include "network/CurlServices.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "contract/TemporaryFolder.h"
#include "support/FakeHost.h"
#include "support/FileContent.h"
#include "support/LoopbackServer.h"
#include "system/posix/PosixFileHelper.h"

namespace tolvan {
namespace {

using test::LoopbackServer;
using testing::HasSubstr;
using testing::MatchesRegex;

/// Files that announce more bytes than can be read.
struct BreakingFiles : test::FakeFiles {
  struct File : InputFile {
    std::uint64_t Size() const override { return 70'000; }
    std::size_t Read(std::span<char> buffer) override {
      if (buffer.size() > good) throw HostError(HostErrorKind::Failed, "la unidad no pudo leer");
      good -= buffer.size();
      return buffer.size();
    }
    std::size_t good = 20'000;
  };

  std::unique_ptr<InputFile> OpenInput(std::string_view) override { return std::make_unique<File>(); }
};

class CurlMailServiceTest : public testing::Test {
 protected:
  CurlMailServiceTest() {
    options_.sender = "tienda@example.com";
    options_.product = "Ñandú";
    options_.storeId = "0001";
    options_.connectTimeout = std::chrono::milliseconds(3000);
    options_.answerTimeout = std::chrono::milliseconds(2000);
    options_.totalTimeout = std::chrono::milliseconds(15000);
    for (int index = 0; index < 70'000; ++index) content_ += static_cast<char>(index * 7 % 251);
    content_ += "\r\n.\r\n..\nFrom x\n";
    test::WriteFile(folder_.File("240131.txt"), content_);
  }

  void Serve(const std::string& mode) {
    server_ = std::make_unique<LoopbackServer>("smtp_server.py", std::vector<std::string>{received_.Path(), mode});
    options_.server = "smtp://127.0.0.1:" + std::to_string(server_->Port());
  }

  MailOutcome Send(const std::string& name = "240131.txt", const std::string& recipient = "ana@example.com") {
    return CurlMailService(options_, files_, interruption_).SendFile(folder_.File(name), recipient);
  }

  std::string Received(const char* part) { return test::ReadFile(received_.File(part)); }

  test::TemporaryFolder folder_;
  test::TemporaryFolder received_;
  PosixFileHelper files_{folder_.Path().native()};
  test::FakeInterruption interruption_;
  SmtpOptions options_;
  std::string content_;
  std::unique_ptr<LoopbackServer> server_;
};

TEST_F(CurlMailServiceTest, DeliversTheFileByteForByte) {
  Serve("accept");
  for (int index = 0; index < 40; ++index) options_.product += "ñ";  // more than one word of a header holds
  const MailOutcome outcome = Send();
  ASSERT_EQ(outcome.status, MailStatus::Sent) << outcome.detail;
  EXPECT_TRUE(Received("attachment") == content_);
  EXPECT_EQ(Received("name"), "240131.txt");
  EXPECT_EQ(Received("envelope"), "tienda@example.com ana@example.com");
  EXPECT_EQ(Received("From"), "tienda@example.com");
  EXPECT_EQ(Received("To"), "ana@example.com");
  EXPECT_EQ(Received("Subject"), options_.product + ": 240131.txt, tienda 0001");
  EXPECT_THAT(Received("Date"), MatchesRegex("[A-Z][a-z][a-z], [0-9]+ [A-Z][a-z][a-z] 20[0-9]+ [0-9:]+ [-+][0-9]+"));
  EXPECT_THAT(Received("Message-ID"), MatchesRegex("<[0-9a-f]+@example\\.com>"));
  EXPECT_THAT(Received("body"),
              HasSubstr(options_.product + " envía el archivo adjunto 240131.txt de la tienda 0001."));
  const std::string raw = Received("raw");
  for (std::size_t at = raw.find('\n'); at != std::string::npos; at = raw.find('\n', at + 1)) {
    ASSERT_EQ(raw[at - 1], '\r');
  }

  // 41 bytes in the first word of the header: a cut between characters, not at the 42 bytes that it has room for.
  EXPECT_THAT(raw, testing::ContainsRegex("\nSubject: =\\?UTF-8\\?B\\?[^\r\n]{55}=\\?=\r\n ="));

  for (const std::string hostile : {"a\"b\\.txt", "año \"1\"\r\nBcc: otro@example.com;%.dat"}) {
    test::WriteFile(folder_.File(hostile), "");
    ASSERT_EQ(Send(hostile).status, MailStatus::Sent);
    EXPECT_EQ(Received("attachment"), "");
    EXPECT_EQ(Received("name"), hostile);
    const std::string headers = Received("raw").substr(0, Received("raw").find("\r\n\r\n"));
    EXPECT_THAT(headers, testing::Not(HasSubstr("\nBcc")));
  }
}

TEST_F(CurlMailServiceTest, RefusesBadRecipientsAndFiles) {
  Serve("accept");
  for (const char* recipient : {"", "ana", "ana@example.com\r\nBcc: x@example.com", "a@example.com,b@example.com",
                                "<ana@example.com>", "ana @example.com"}) {
    EXPECT_EQ(Send("240131.txt", recipient).status, MailStatus::NotSent) << recipient;
  }
  EXPECT_EQ(Send("falta.txt").status, MailStatus::AttachmentUnreadable);
  BreakingFiles breaking;
  const MailOutcome outcome =
      CurlMailService(options_, breaking, interruption_).SendFile(folder_.File("240131.txt"), "ana@example.com");
  EXPECT_EQ(outcome.status, MailStatus::AttachmentFailed);
  EXPECT_THAT(outcome.detail, HasSubstr("la unidad no pudo leer"));
  EXPECT_EQ(test::NamesIn(received_.Path()).size(), 0U) << "nothing half was taken";
}

TEST_F(CurlMailServiceTest, EndsAsTheServerSays) {
  const struct {
    const char* mode;
    const char* user;
    const char* password;
    MailStatus status;
    const char* detail;
  } cases[] = {
      {"rcpt 450 4.2.1 buzon ocupado", "", "", MailStatus::Refused, "450 4.2.1 buzon ocupado"},
      {"rcpt 550 5.1.1 no existe", "", "", MailStatus::Refused, "550 5.1.1 no existe"},
      {"data 550 5.7.1 rechazado", "", "", MailStatus::Refused, "550 5.7.1 rechazado"},
      {"data 451 4.3.0 intente luego", "", "", MailStatus::Refused, "451 4.3.0 intente luego"},
      {"silent", "", "", MailStatus::Refused, "no respondió a tiempo"},
      {"login", "", "", MailStatus::Refused, "530"},
      {"login", "caja", "equivocada", MailStatus::LoginRefused, "535"},
      {"login", "caja", "correcta", MailStatus::Sent, ""},
      {"starttls", "", "", MailStatus::Sent, ""},
      // no password for a server that cannot say who it is
      {"starttls", "caja", "correcta", MailStatus::Refused, "certificado"},
  };
  for (const auto& one : cases) {
    Serve(one.mode);
    options_.user = one.user;
    options_.password = one.password;
    const MailOutcome outcome = Send();
    EXPECT_EQ(outcome.status, one.status) << one.mode << ": " << outcome.detail;
    EXPECT_THAT(outcome.detail, HasSubstr(one.detail));
    EXPECT_EQ(std::filesystem::remove(received_.File("raw")), one.status == MailStatus::Sent) << one.mode;
  }
  EXPECT_EQ(Received("encrypted"), "True");
  options_.server = "smtps://127.0.0.1:" + std::to_string(server_->Port());
  EXPECT_EQ(Send().status, MailStatus::Refused) << "no encryption there from the start";
  const LoopbackServer mute("answer_server.py", {received_.Path()});
  options_.server = "smtps://127.0.0.1:" + std::to_string(mute.Port());
  EXPECT_EQ(Send().status, MailStatus::Refused) << "takes the connection and says nothing";
}

TEST_F(CurlMailServiceTest, KnowsWhenThereIsNoServer) {
  std::string details;
  for (const std::string& server :
       {std::string(), "smtp://127.0.0.1:" + std::to_string(test::unusedPort), std::string("smtp://no.invalid:25")}) {
    options_.server = server;
    const MailOutcome outcome = Send();
    EXPECT_EQ(outcome.status, MailStatus::NoService) << server;
    details += outcome.detail + '\n';
  }
  EXPECT_EQ(details,
            "No hay servidor de correo en la configuración.\n"
            "Servidor de correo: el servidor no acepta la conexión (código 7)\n"
            "Servidor de correo: no se encuentra el servidor (código 6)\n");
  Serve("silent");
  interruption_.requested = true;
  EXPECT_EQ(Send().status, MailStatus::CancelledByUser);
}

}  // namespace
}  // namespace tolvan
