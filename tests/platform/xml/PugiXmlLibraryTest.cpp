#include "platform/xml/PugiXmlLibrary.h"

#include <gtest/gtest.h>

#include <string>

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

class PugiXmlLibraryTest : public ::testing::Test {
 protected:
  std::string Saved() const {
    MemoryFile file;
    document_->Save(file);
    return file.bytes;
  }

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
  const XmlNode before = document_->AppendElement(root_, "A");
  const XmlNode other = document_->AppendElement(root_, "B");
  std::string inRoot;
  std::string inOther;
  for (int row = 0; row < 30'000; ++row) {  // several megabytes, so that blocks follow one another
    const std::string number = std::to_string(row) + std::string(90, '.');
    const bool toOther = row % 1'000 > 990;
    document_->BeginRecord(toOther ? other : root_, "F");
    document_->AppendField("T", "fila & " + number);
    document_->AppendField("N", "");
    document_->EndRecord();
    (toOther ? inOther : inRoot) += "<F><T>fila &amp; " + number + "</T><N></N></F>";
    if (row % 5'000 != 7) continue;
    document_->AppendText(document_->AppendElement(root_, "E"), number);
    inRoot += "<E>" + number + "</E>";
  }
  document_->AppendText(before, "al final");
  const std::string saved = Saved();
  EXPECT_TRUE(saved == "<R><A>al final</A><B>" + inOther + "</B>" + inRoot + "</R>");
  EXPECT_TRUE(Saved() == saved);
  EXPECT_FALSE(document_->SelectSingleNode(root_, "F"));
  EXPECT_EQ(document_->SelectSingleNode(root_, "A"), before);
}

TEST_F(PugiXmlLibraryTest, RefusesWhatCannotBe) {
  EXPECT_THROW(document_->SelectSingleNode(root_, "A["), HostError);
  for (const char* name : {"", "a<b", "a b", "1a", "-a"}) {
    EXPECT_THROW(document_->AppendElement(root_, name), HostError) << name;
    EXPECT_THROW(document_->BeginRecord(root_, name), HostError) << name;
  }
  EXPECT_THROW(document_->AppendProcessingInstruction("xml", ""), HostError);  // no longer first
}

TEST_F(PugiXmlLibraryTest, AFullDiskStopsTheSave) {
  document_->AppendText(root_, std::string(100'000, 'x'));
  MemoryFile file;
  file.room = 50'000;
  EXPECT_THROW(document_->Save(file), HostError);
}

}  // namespace
}  // namespace tolvan::test
