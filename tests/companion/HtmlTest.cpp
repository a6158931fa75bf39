// The HTML report: what it holds stays text, and it needs nothing but itself.
#include "companion/Html.h"

#include <gtest/gtest.h>

#include <regex>
#include <vector>

#include "core/Text.h"

namespace loader::test {
namespace {

HtmlReport Sample() {
  HtmlReport report;
  report.language = Language::English;
  report.title = u"A & B";
  report.made = {2026, 11, 2, 9, 5, 7};
  report.a = {u"A", u"<one>.KOV", u"KOV", u""};
  report.b = {u"B", u"\"two\".KOV", u"KOV", u"'note'"};
  report.headingA = u"A";
  report.headingB = u"B";
  report.counts = {{3, u"different", Tone::Changed}, {0, u"only in A", Tone::OnlyA}};
  HtmlRow row{u"CH 3 <Tag>", u"moved", u"C02TAG", u"different", u"why", Tone::Changed, {}, {}};
  row.a = {u"\"<script>alert('x')</script>\"", u"C01&C02", false};
  row.b = {u"none", u"", true};
  report.groups = {{u"Channels", {{u"", {row, row}}}}, {u"Mail", {{u"Sub", {row}}}}};
  return report;
}

TEST(HtmlPages, EscapeWhateverTheyHold) {
  const std::string page = HtmlPage(Sample());
  EXPECT_NE(page.find("&quot;&lt;script&gt;alert(&#39;x&#39;)&lt;/script&gt;&quot;"), std::string::npos);
  EXPECT_NE(page.find("<h1>A &amp; B</h1>"), std::string::npos);
  EXPECT_NE(page.find("<title>A &amp; B: &lt;one&gt;.KOV, &quot;two&quot;.KOV</title>"), std::string::npos);
  EXPECT_NE(page.find("CH 3 &lt;Tag&gt;"), std::string::npos);
  EXPECT_NE(page.find("C01&amp;C02"), std::string::npos);
  EXPECT_EQ(page.find("<script"), std::string::npos);
  EXPECT_EQ(page.find("<one>"), std::string::npos);
}

TEST(HtmlPages, LoadNothingFromElsewhere) {
  const std::string page = HtmlPage(Sample());
  for (const char* loading :
       {"http:", "https:", "//", " src=", "url(", "@import", "<link", "<script", "<img"}) {
    EXPECT_EQ(page.find(loading), std::string::npos) << loading;
  }
}

TEST(HtmlPages, SayTheirLanguageTheirTimeAndTheirCounts) {
  HtmlReport report = Sample();
  std::string page = HtmlPage(report);
  EXPECT_TRUE(page.starts_with("<!DOCTYPE html>\n<html lang=\"en\">\n"));
  EXPECT_NE(page.find("<time datetime=\"2026-11-02T09:05:07\">2026-11-02 09:05:07</time>"),
            std::string::npos);
  EXPECT_NE(page.find("<li class=\"changed\"><b>3</b> <span>different</span></li>"), std::string::npos);
  EXPECT_NE(page.find("<li class=\"only-a none\"><b>0</b>"), std::string::npos);
  EXPECT_NE(page.find("<th scope=\"col\" class=\"name\">Parameter</th>"), std::string::npos);
  report.language = Language::Japanese;
  page = HtmlPage(report);
  EXPECT_NE(page.find("<html lang=\"ja\">"), std::string::npos);
  EXPECT_NE(page.find("<th scope=\"col\" class=\"name\">設定</th>"), std::string::npos);
}

TEST(HtmlPages, LeadToTheirGroupsAndCountTheirRows) {
  const std::string page = HtmlPage(Sample());
  EXPECT_NE(page.find("<a href=\"#group-1\">Channels</a> <span class=\"size\">2</span>"), std::string::npos);
  EXPECT_NE(page.find("<section id=\"group-2\">\n<h2>Mail <span class=\"size\">1</span></h2>"),
            std::string::npos);
  HtmlReport single = Sample();
  single.groups.pop_back();
  EXPECT_EQ(HtmlPage(single).find("<nav>"), std::string::npos);
}

TEST(HtmlPages, CloseEveryElement) {
  const std::string page = HtmlPage(Sample());
  const std::string body = page.substr(page.find("</style>") + 8);
  std::vector<std::string> open{"html", "head"};
  const std::regex tag("<(/?)([a-z0-9]+)[^>]*>");
  for (std::sregex_iterator found(body.begin(), body.end(), tag), none; found != none; ++found) {
    const std::string name = (*found)[2];
    if ((*found)[1].length() == 0) {
      open.push_back(name);
      continue;
    }
    ASSERT_FALSE(open.empty());
    EXPECT_EQ(open.back(), name) << found->position();
    open.pop_back();
  }
  EXPECT_TRUE(open.empty()) << open.back();
}

// On paper in black and white no meaning is in a colour alone: each row says its verdict in words.
TEST(HtmlPages, SayEachVerdictInWords) {
  const std::string page = HtmlPage(Sample());
  EXPECT_NE(page.find("<td class=\"verdict\">different<span class=\"note\">why</span></td>"),
            std::string::npos);
  EXPECT_NE(page.find("<td class=\"b absent\" data-of=\"B\"><span class=\"text\">none</span></td>"),
            std::string::npos);
  for (const char* rule : {"@media print", "prefers-color-scheme: dark", "position: sticky",
                           "display: table-header-group", "break-inside: avoid"}) {
    EXPECT_NE(page.find(rule), std::string::npos) << rule;
  }
}

} // namespace
} // namespace loader::test
