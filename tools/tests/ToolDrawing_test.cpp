// Tests of the drawings' pieces that need no process of their own: the
// layering and the choice of parts of a drawing over the limit, the DOT and
// HTML escaping, and the HTML page around a drawing.
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "ComparisonReport.h"
#include "DotWriter.h"
#include "DrawingParts.h"
#include "HtmlReport.h"
#include "SvgLayout.h"
#include "ToolError.h"

namespace vekzol_tool {
namespace {

using Links = std::vector<std::pair<size_t, size_t>>;

TEST(LayerNodes, RanksAChainOneAfterTheOther) {
  EXPECT_EQ(LayerNodes(3, Links{{0, 1}, {1, 2}}), (std::vector<size_t>{0, 1, 2}));
}

TEST(LayerNodes, RanksANodeByItsLongestPath) {
  EXPECT_EQ(LayerNodes(3, Links{{0, 2}, {0, 1}, {1, 2}}), (std::vector<size_t>{0, 1, 2}));
}

TEST(LayerNodes, TurnsTheLinkThatClosesACycle) {
  // 2 -> 0 closes the cycle the walk from 0 finds: it counts as 0 -> 2.
  EXPECT_EQ(LayerNodes(3, Links{{0, 1}, {1, 2}, {2, 0}}), (std::vector<size_t>{0, 1, 2}));
  EXPECT_EQ(LayerNodes(1, Links{{0, 0}}), (std::vector<size_t>{0}));
}

TEST(LayerNodes, StartsEachWalkAtTheFirstNodeNotYetSeen) {
  // 1 -> 0: the walk from 0 finds nothing, the one from 1 reaches 0, done.
  EXPECT_EQ(LayerNodes(2, Links{{1, 0}}), (std::vector<size_t>{1, 0}));
}

std::vector<bool> Kept(const PartChoice& choice) { return choice.kept; }

TEST(ChooseParts, KeepsEverythingWithinTheLimits) {
  const PartChoice choice = ChooseParts(4, Links{{0, 1}, {2, 3}}, 4, 2);
  EXPECT_EQ(Kept(choice), (std::vector<bool>{true, true, true, true}));
  EXPECT_EQ(choice.parts, 2u);
  EXPECT_EQ(choice.keptParts, 2u);
}

TEST(ChooseParts, TakesTheLargestPartFirstAndEqualOnesByTheirFirstNode) {
  // Parts {0, 1}, {2, 3, 4} and {5, 6}: the three, then the first pair.
  const Links links{{0, 1}, {2, 3}, {3, 4}, {5, 6}};
  const PartChoice choice = ChooseParts(7, links, 5, 20);
  EXPECT_EQ(Kept(choice), (std::vector<bool>{true, true, true, true, true, false, false}));
  EXPECT_EQ(choice.parts, 3u);
  EXPECT_EQ(choice.keptParts, 2u);
}

TEST(ChooseParts, PassesOverAPartThatDoesNotFitForSmallerOnes) {
  const Links links{{0, 1}, {1, 2}, {3, 4}};
  EXPECT_EQ(Kept(ChooseParts(5, links, 2, 20)),
            (std::vector<bool>{false, false, false, true, true}));
}

TEST(ChooseParts, CountsTheRanksALinkCrosses) {
  // 0 -> 1 -> 2 -> 3 and 0 -> 3: 1 + 1 + 1 + 3 = 6 ranks; a single node
  // beside it with a link to itself: 1 rank.
  const Links links{{0, 1}, {1, 2}, {2, 3}, {0, 3}, {4, 4}};
  EXPECT_EQ(Kept(ChooseParts(5, links, 5, 7)), (std::vector<bool>{true, true, true, true, true}));
  EXPECT_EQ(Kept(ChooseParts(5, links, 5, 6)), (std::vector<bool>{true, true, true, true, false}));
  EXPECT_EQ(Kept(ChooseParts(5, links, 5, 5)),
            (std::vector<bool>{false, false, false, false, true}));
}

TEST(ChooseParts, CountsNodesWithoutLinksAsPartsOfTheirOwn) {
  const PartChoice choice = ChooseParts(3, Links{}, 2, 0);
  EXPECT_EQ(Kept(choice), (std::vector<bool>{true, true, false}));
  EXPECT_EQ(choice.parts, 3u);
}

TEST(DotLabelText, EscapesQuotesBackslashesAndLineFeeds) {
  EXPECT_EQ(DotLabelText("a\"b\\c\nd"), "a\\\"b\\\\c\\nd");
  EXPECT_EQ(DotLabelText("end\\"), "end\\\\");
}

TEST(DotLabelText, KeepsAmpersandsFromBeingReadAsEntities) {
  EXPECT_EQ(DotLabelText("A&amp;B"), "A&amp;amp;B");
}

TEST(DotLabelText, ShowsControlCharactersAsTheirSymbols) {
  EXPECT_EQ(DotLabelText(std::string("\x01\t\r\x1f\x7f", 5)),
            "\xE2\x90\x81\xE2\x90\x89\xE2\x90\x8D\xE2\x90\x9F\xE2\x90\xA1");
}

TEST(DotLabelText, PassesUtf8Through) {
  EXPECT_EQ(DotLabelText("Schwei\xC3\x9F"
                         "en-\xF0\x9F\x98\x80"),
            "Schwei\xC3\x9F"
            "en-\xF0\x9F\x98\x80");
}

TEST(DotNodeName, HexEscapesWhatDotOrGraphvizWouldReadOtherwise) {
  EXPECT_EQ(DotNodeName("%x^\"\\&"), "^25x^5E^22^5C^26");
  EXPECT_EQ(DotNodeName(std::string("a\nb\x7f", 4)), "a^0Ab^7F");
  EXPECT_EQ(DotNodeName("PRC-0001 \xC3\xA9/:"), "PRC-0001 \xC3\xA9/:");
}

TEST(DotNodeName, GivesDistinctIdsDistinctNames) {
  EXPECT_NE(DotNodeName("^5E"), DotNodeName("^"));
  EXPECT_NE(DotNodeName("%25"), DotNodeName("%"));
}

TEST(HtmlEscape, EscapesMarkupAndQuotes) {
  EXPECT_EQ(HtmlEscape("<a href=\"x\">'&'</a>"),
            "&lt;a href=&quot;x&quot;&gt;&#39;&amp;&#39;&lt;/a&gt;");
}

TEST(HtmlEscape, ShowsControlCharactersAsTheirSymbolsButKeepsWhiteSpace) {
  EXPECT_EQ(HtmlEscape(std::string("\x01\t\n\r\x7f", 5)), "\xE2\x90\x81\t\n\r\xE2\x90\xA1");
}

ComparisonReport PageReport() {
  ComparisonReport report;
  report.different = true;
  report.lists = {{"verticesToBeAdded", "Vertices to add", {CString("PRC-<1>")}},
                  {"edgesToBeRemoved", "Edges to remove", {CString("R-1"), CString("R-\"2\"")}}};
  return report;
}

TEST(RenderHtml, ShowsTheOutcomeAndTheCounts) {
  HtmlPage page;
  page.oldPath = "old <1>.json";
  page.newPath = "new&.json";
  const std::string html = RenderHtml(PageReport(), page);
  EXPECT_NE(html.find("<title>vekzol compare: different</title>\n"), std::string::npos);
  EXPECT_NE(html.find("<p class=\"files\">Old: <code>old &lt;1&gt;.json</code><br>New: "
                      "<code>new&amp;.json</code></p>\n<p id=\"outcome\">Outcome: different</p>\n"
                      "<table id=\"counts\">\n"
                      "<tr><th>Vertices to add</th><td>1</td></tr>\n"
                      "<tr><th>Edges to remove</th><td>2</td></tr>\n"
                      "</table>\n"),
            std::string::npos);
}

TEST(RenderHtml, ListsTheEscapedIdsUnderTheFilter) {
  const std::string html = RenderHtml(PageReport(), HtmlPage());
  EXPECT_NE(html.find("<input type=\"search\" id=\"filter\""), std::string::npos);
  EXPECT_NE(html.find("<section class=\"list\" id=\"verticesToBeAdded\">\n"
                      "<h3>Vertices to add (<span class=\"shown\">1</span>)</h3>\n<ul>\n"
                      "<li>PRC-&lt;1&gt;</li>\n</ul>\n</section>\n"
                      "<section class=\"list\" id=\"edgesToBeRemoved\">\n"
                      "<h3>Edges to remove (<span class=\"shown\">2</span>)</h3>\n<ul>\n"
                      "<li>R-1</li>\n<li>R-&quot;2&quot;</li>\n</ul>\n</section>\n<script>\n"),
            std::string::npos);
}

TEST(RenderHtml, EmbedsTheSvgElementWithoutItsPrologue) {
  HtmlPage page;
  page.svg =
      "<?xml version=\"1.0\"?>\n<!DOCTYPE svg>\n<!-- Title: change -->\n<svg width=\"1pt\">"
      "<g/></svg>\n";
  page.cutNote = "drawing 1 of 2 changed vertices";
  const std::string html = RenderHtml(PageReport(), page);
  EXPECT_NE(html.find("<h2>Drawing</h2>\n<p id=\"cut-note\">Drawing 1 of 2 changed vertices</p>\n"
                      "<div id=\"drawing\">\n<svg width=\"1pt\"><g/></svg>\n</div>\n"),
            std::string::npos);
  EXPECT_EQ(html.find("<?xml"), std::string::npos);
  EXPECT_EQ(html.find("DOCTYPE svg"), std::string::npos);
}

TEST(RenderHtml, LoadsNothingFromOutside) {
  const std::string html = RenderHtml(PageReport(), HtmlPage());
  EXPECT_NE(html.find("content=\"default-src 'none'; style-src 'unsafe-inline'; script-src "
                      "'unsafe-inline'; img-src data:\""),
            std::string::npos);
  EXPECT_EQ(html.find("src="), std::string::npos);
  EXPECT_EQ(html.find("href="), std::string::npos);
}

TEST(LayOutSvg, DrawsAGraphAsSvg) {
  const std::string svg = LayOutSvg("digraph \"g\" { \"a\" -> \"b\" [label=\"R-1\"]; }\n");
  EXPECT_EQ(svg.rfind("<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\"?>\n", 0), 0u);
  EXPECT_NE(svg.find("<title>a</title>"), std::string::npos);
  EXPECT_NE(svg.find("<title>b</title>"), std::string::npos);
  EXPECT_NE(svg.find(">R&#45;1</text>"), std::string::npos);
  EXPECT_EQ(svg.substr(svg.size() - 7), "</svg>\n");
}

TEST(LayOutSvg, RefusesTextThatIsNoDotWithGraphvizsMessage) {
  const std::string prefix = "the drawing cannot be read as DOT: Graphviz says: ";
  try {
    LayOutSvg("digraph { \"a\" -> }");
    FAIL() << "no ToolError";
  } catch (const ToolError& error) {
    const std::string message = error.what();
    EXPECT_EQ(message.substr(0, prefix.size()), prefix) << message;
    EXPECT_GT(message.size(), prefix.size());
  }
  // The next drawing is not troubled by the failed one.
  EXPECT_NE(LayOutSvg("digraph { \"c\"; }").find("<title>c</title>"), std::string::npos);
}

}  // namespace
}  // namespace vekzol_tool
