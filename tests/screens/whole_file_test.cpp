#include "locus/whole_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <cstddef>
#include <string>
#include <vector>

#include "tests/support/small_files.h"

namespace orvane {
namespace {

class WholeFile : public testing::Test {
protected:
    QString PathOf(const char* name) const { return folder.filePath(name); }

    static QString Written(const QString& path, const std::vector<std::string>& pieces) {
        const auto nextPiece = [&pieces, next = std::size_t{0}]() mutable {
            return next < pieces.size() ? pieces[next++] : std::string();
        };
        return WriteWholeFile(path, nextPiece).value_or("written");
    }
    static std::string Read(const QString& path) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
        return file.readAll().toStdString();
    }
    QStringList Files() const {
        return QDir(folder.path()).entryList(QDir::Files | QDir::System | QDir::Hidden, QDir::Name);
    }

    QTemporaryDir folder;
};

TEST_F(WholeFile, HoldsAllPieces) {
    const QString path = PathOf("a");
    const std::vector<std::vector<std::string>> rows = {{},
                                                        {"one"},
                                                        {"one", std::string("\0\r\n", 3), "three"},
                                                        {std::string(3'000'000, 'x'), "y"}};
    for (const auto& pieces : rows) {
        SCOPED_TRACE(pieces.size());
        EXPECT_EQ(Written(path, pieces), "written");
        std::string all;
        for (const std::string& piece : pieces) all += piece;
        EXPECT_TRUE(Read(path) == all);
        EXPECT_EQ(Files(), QStringList{"a"});
    }
}

// The disk is full in the middle of a piece, between two of them, and ahead of the first.
TEST_F(WholeFile, TellsThatTheDiskIsFullAndLeavesWhatIsThere) {
    struct Row {
        rlim_t room;
        std::vector<std::string> pieces;
    };
    const Row rows[] = {{1000, {std::string(1001, 'x')}},
                        {1000, {std::string(999, 'x'), "yz"}},
                        {1000, {std::string(1000, 'x'), "y"}},
                        {0, {"x"}}};
    const QString path = PathOf("a");
    ASSERT_EQ(Written(path, {"before"}), "written");
    for (const Row& row : rows) {
        SCOPED_TRACE(row.pieces.front().size());
        QString reason;
        {
            const test::SmallFiles small(row.room);
            reason = Written(path, row.pieces);
        }
        EXPECT_EQ(reason, "File too large");
        EXPECT_EQ(Read(path), "before");
        EXPECT_EQ(Files(), QStringList{"a"});
    }
}

TEST_F(WholeFile, RefusesWhatIsNoPlainFile) {
    ASSERT_TRUE(QFile::link("/dev/full", PathOf("device")));
    ASSERT_EQ(mkfifo(PathOf("pipe").toStdString().c_str(), 0600), 0);
    for (const QString& path : {PathOf("device"), PathOf("pipe"), folder.path()}) {
        SCOPED_TRACE(path.toStdString());
        EXPECT_EQ(Written(path, {"x"}), "it is no plain file");
    }
    EXPECT_EQ(Files(), (QStringList{"device", "pipe"}));
    EXPECT_NE(Written(PathOf("none/a"), {"x"}), "written");
    EXPECT_NE(Written(QString(), {"x"}), "written");
}

TEST_F(WholeFile, GoesThroughALinkToAFile) {
    ASSERT_EQ(Written(PathOf("file"), {"before"}), "written");
    ASSERT_TRUE(QFile::link(PathOf("file"), PathOf("link")));
    EXPECT_EQ(Written(PathOf("link"), {"after"}), "written");
    EXPECT_EQ(Read(PathOf("file")), "after");
    EXPECT_EQ(Files(), (QStringList{"file", "link"}));
}

}  // namespace
}  // namespace orvane
