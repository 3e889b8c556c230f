#include "TestSupport.h"

#include <gtest/gtest.h>

TEST(Qxtool, HelpVersionAndUnknownCommands) {
    const auto help = qxtest::runQxtool({QStringLiteral("--help")});
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_TRUE(help.out.startsWith(QStringLiteral("usage: qxtool")));
    const auto version = qxtest::runQxtool({QStringLiteral("--version")});
    EXPECT_EQ(version.exitCode, 0);
    EXPECT_TRUE(version.out.startsWith(QStringLiteral("qxtool 3.")));
    const auto unknown = qxtest::runQxtool({QStringLiteral("no-such-command")});
    EXPECT_EQ(unknown.exitCode, 2);
    EXPECT_TRUE(unknown.err.contains(QStringLiteral("unknown command 'no-such-command'")));
    // Without arguments it explains itself and fails.
    EXPECT_EQ(qxtest::runQxtool({}).exitCode, 2);
}
