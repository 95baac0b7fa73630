// SPDX-License-Identifier: MIT
#include "core/launch_options.h"

#include <gtest/gtest.h>

namespace zorvekan {
namespace {

// Batch export is driven from scripts: every accepted form must give the same pages,
// in order, with the test file kept apart from the options.
TEST(LaunchOptions, ExportsAndFile) {
    const LaunchOptions o =
        parseLaunchOptions({"--export", "inp=out/page.PDF", "--export=kv1=a.png", "well.zvt"});
    ASSERT_FALSE(o.error);
    ASSERT_EQ(o.exports.size(), 2u);
    EXPECT_EQ(o.exports[0].screen, "inp");
    EXPECT_EQ(o.exports[0].path, "out/page.PDF");
    EXPECT_EQ(o.exports[1].screen, "kv1");
    EXPECT_EQ(o.exports[1].path, "a.png");
    ASSERT_TRUE(o.file);
    EXPECT_EQ(*o.file, "well.zvt");
    EXPECT_FALSE(o.help);

    const LaunchOptions dash = parseLaunchOptions({"--", "--odd-name.zvt"});
    ASSERT_FALSE(dash.error);
    EXPECT_EQ(*dash.file, "--odd-name.zvt");
    EXPECT_TRUE(parseLaunchOptions({"-h"}).help);
    EXPECT_FALSE(parseLaunchOptions({}).file);
}

// A mistyped command line must say what is wrong instead of starting the program
// with half the request, or writing a page in a format nobody asked for.
TEST(LaunchOptions, Errors) {
    for (const std::vector<std::string>& args :
         std::vector<std::vector<std::string>>{{"--export"},
                                               {"--export", "inp"},
                                               {"--export", "=a.png"},
                                               {"--export", "inp="},
                                               {"--export", "inp=page.jpg"},
                                               {"--verbose"},
                                               {"a.zvt", "b.zvt"}}) {
        const LaunchOptions o = parseLaunchOptions(args);
        EXPECT_TRUE(o.error) << args.front();
    }
    EXPECT_EQ(pageFormatOf("x.Png"), PageFormat::Png);
    EXPECT_EQ(pageFormatOf("x.pdf"), PageFormat::Pdf);
    EXPECT_FALSE(pageFormatOf("pdf"));
}

} // namespace
} // namespace zorvekan
