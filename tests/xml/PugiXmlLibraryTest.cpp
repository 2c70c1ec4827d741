#include "xml/PugiXmlLibrary.h"

#include <gtest/gtest.h>

#include <string>

#include "support/ThrownBy.h"

namespace tolvan::test {
namespace {

struct MemoryFile : WholeFile {
  void Write(std::string_view more) override {
    if (bytes.size() + more.size() > room) throw HostError(HostErrorKind::Full, "no queda espacio");
    bytes += more;
  }
  void Commit() override {}
  std::string bytes;
  std::size_t room = std::size_t{1} << 30;
};

/// Rows with a text to escape, an empty one and a long one. Fails before row `failsAt`.
class Rows : public XmlRecords {
 public:
  explicit Rows(int count, int failsAt = -1) : count_(count), failsAt_(failsAt) {}

  bool Next() override {
    if (++row_ == failsAt_) throw HostError(HostErrorKind::Unreachable, "se perdió la conexión");
    texts_ = {"fila & " + std::to_string(row_), "", std::string(90, '.')};
    return row_ < count_;
  }
  std::string_view Field(std::size_t index) const override { return texts_.at(index); }

  static std::string Markup(int count) {
    std::string markup;
    for (int row = 0; row < count; ++row) {
      markup += "<F><T>fila &amp; " + std::to_string(row) + "</T><N></N><L>" + std::string(90, '.') + "</L></F>";
    }
    return markup;
  }

 private:
  int count_;
  int failsAt_;
  int row_ = -1;
  std::vector<std::string> texts_;
};

class PugiXmlLibraryTest : public ::testing::Test {
 protected:
  std::string Saved() const {
    MemoryFile file;
    document_->Save(file);
    return file.bytes;
  }

  void AppendRows(std::string_view list, int count) {
    document_->AppendRecords(root_, {list, "F", {"T", "N", "L"}}, std::make_unique<Rows>(count));
  }

  const XmlRecordLayout layout_{"Lista", "F", {"T", "N", "L"}};
  PugiXmlLibrary library_;
  std::unique_ptr<XmlDocument> document_ = library_.CreateDocument();
  XmlNode root_ = document_->AppendElement(document_->Top(), "R");
};

TEST_F(PugiXmlLibraryTest, TextIsAlwaysWellFormed) {
  const struct {
    std::string_view text, saved;
  } cases[] = {
      {"", "<R></R>"},
      {"a & b < c > d \"e' ]]>", "<R>a &amp; b &lt; c &gt; d \"e' ]]&gt;</R>"},
      {" \t\n", "<R> \t\n</R>"},
      {"1\r\n2\r", "<R>1&#13;\n2&#13;</R>"},
      {"Ñandú € \U0001F600", "<R>Ñandú € \U0001F600</R>"},
      {std::string_view("a\0b\x01\x1F\x7F", 6), "<R>a\uFFFDb\uFFFD\uFFFD\x7F</R>"},
      {"\uFFFE\uFFFF\uFFFD\uFFFC", "<R>\uFFFD\uFFFD\uFFFD\uFFFC</R>"},
      {"\xF1 \xC3", "<R>\uFFFD \uFFFD</R>"},                                // Windows-1252, and a character cut short
      {"\xED\xA0\x80|\xC0\x80", "<R>\uFFFD\uFFFD\uFFFD|\uFFFD\uFFFD</R>"},  // a surrogate, an overlong NUL
  };
  for (const auto& [text, saved] : cases) {
    const auto document = library_.CreateDocument();
    document->AppendText(document->AppendElement(document->Top(), "R"), text);
    MemoryFile file;
    document->Save(file);
    EXPECT_EQ(file.bytes, saved);
  }
}

TEST_F(PugiXmlLibraryTest, RecordsAreSavedWhereTheyWereAppended) {
  const XmlNode first = document_->AppendElement(root_, "A");
  constexpr int many = 30'000;  // several megabytes, so that blocks follow one another
  AppendRows("Muchas", many);
  AppendRows("Ninguna", 0);
  document_->AppendText(document_->AppendElement(root_, "E"), "al final");
  document_->AppendRecords(first, layout_, std::make_unique<Rows>(1));  // appended later, stands earlier
  EXPECT_FALSE(document_->SelectSingleNode(root_, "Muchas"));
  EXPECT_EQ(document_->SelectSingleNode(root_, "A"), first);
  EXPECT_TRUE(Saved() == "<R><A><Lista>" + Rows::Markup(1) + "</Lista></A><Muchas>" + Rows::Markup(many) +
                             "</Muchas><Ninguna/><E>al final</E></R>");
  EXPECT_THROW(Saved(), HostError);  // the records are gone
}

TEST_F(PugiXmlLibraryTest, FailuresEndTheSave) {
  const auto failure = [&](int rows, int failsAt, std::size_t room) {
    const auto document = library_.CreateDocument();
    document->AppendRecords(document->AppendElement(document->Top(), "R"), layout_,
                            std::make_unique<Rows>(rows, failsAt));
    MemoryFile file;
    file.room = room;
    return KindThrownBy([&] { document->Save(file); });
  };
  constexpr std::size_t enough = std::size_t{1} << 30;
  for (const int rows : {3, 30'000}) {
    EXPECT_EQ(failure(rows, rows - 1, enough), HostErrorKind::Unreachable);
    for (const std::size_t room : {0U, 5U, 200U}) EXPECT_EQ(failure(rows, -1, room), HostErrorKind::Full) << room;
  }
  EXPECT_EQ(failure(30'000, -1, 2'000'000), HostErrorKind::Full);
}

TEST_F(PugiXmlLibraryTest, RefusesWhatCannotBe) {
  EXPECT_THROW(document_->SelectSingleNode(root_, "A["), HostError);
  for (const char* name : {"", "a<b", "a b", "1a", "-a"}) {
    EXPECT_THROW(document_->AppendElement(root_, name), HostError) << name;
    EXPECT_THROW(document_->AppendRecords(root_, {name, "F", {"T"}}, std::make_unique<Rows>(0)), HostError) << name;
    EXPECT_THROW(document_->AppendRecords(root_, {"L", name, {"T"}}, std::make_unique<Rows>(0)), HostError) << name;
    EXPECT_THROW(document_->AppendRecords(root_, {"L", "F", {name}}, std::make_unique<Rows>(0)), HostError) << name;
  }
  EXPECT_THROW(document_->AppendProcessingInstruction("xml", ""), HostError);  // no longer first
}

}  // namespace
}  // namespace tolvan::test
