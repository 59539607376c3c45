// The workspace file: what comes back, and what damage costs.

#include "workbench/desktop/sessions/WorkspaceFile.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace kvx::desktop {
namespace {

class WorkspaceFileTest : public testing::Test {
  protected:
    QByteArray Bytes() const {
        QFile file(path_);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }
    Result<WorkspaceRead> Read(const QByteArray& bytes) const {
        QFile file(path_);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        file.close();
        return ReadWorkspace(path_);
    }
    Workspace Sample() const {
        const QStringList files{folder_.filePath("traces/a.log"), folder_.filePath("b.log")};
        return {WorkspaceTrace{TraceFiles(files), 2},
                {{2, 7, true}, {1, 801, false}},
                host::OSTracePosition{1e15, 1e15 + 2, 0.5, 0, 1e15 + 1, 3},
                QByteArray("\0\1layout\xff", 9),
                {{"OSTraceCtrlTraceViews", "1"}, {"Größe", "5,8,\"5\"\n12"}}};
    }

    QTemporaryDir folder_;
    QString path_ = folder_.filePath("day.kvxw");
};

TEST_F(WorkspaceFileTest, ComesBackAsItWasWritten) {
    const Workspace sample = Sample();
    ASSERT_EQ(WriteWorkspace(path_, sample), "");
    const auto read = ReadWorkspace(path_);
    ASSERT_TRUE(read);
    EXPECT_TRUE(read->damage.isEmpty());
    EXPECT_EQ(read->workspace.trace, sample.trace);
    EXPECT_EQ(read->workspace.lines, sample.lines);
    EXPECT_EQ(read->workspace.position, sample.position);
    EXPECT_EQ(read->workspace.layout, sample.layout);
    EXPECT_EQ(read->workspace.texts, sample.texts);

    const Workspace demonstration{WorkspaceTrace{}, {}, {}, {}, {}};
    ASSERT_EQ(WriteWorkspace(path_, demonstration), "");
    EXPECT_EQ(ReadWorkspace(path_)->workspace.trace, WorkspaceTrace{}) << "the demonstration";
    ASSERT_EQ(WriteWorkspace(path_, {}), "");
    EXPECT_EQ(ReadWorkspace(path_)->workspace.trace, std::nullopt);
}

TEST_F(WorkspaceFileTest, TraceBesideItMovesWithIt) {
    ASSERT_EQ(WriteWorkspace(path_, Sample()), "");
    const QByteArray bytes = Bytes();
    EXPECT_TRUE(bytes.contains("\"path\":\"traces/a.log\"")) << bytes.toStdString();
    QDir(folder_.path()).mkdir("moved");
    path_ = folder_.filePath("moved/day.kvxw");
    const QStringList moved{folder_.filePath("moved/traces/a.log"),
                            folder_.filePath("moved/b.log")};
    EXPECT_EQ(Read(bytes)->workspace.trace->files, TraceFiles(moved));
    // One elsewhere is named in full.
    ASSERT_EQ(WriteWorkspace(path_, Sample()), "");
    EXPECT_EQ(ReadWorkspace(path_)->workspace.trace, Sample().trace);
}

TEST_F(WorkspaceFileTest, DamagedLineCostsOnlyItself) {
    ASSERT_EQ(WriteWorkspace(path_, Sample()), "");
    const QList<QByteArray> lines = Bytes().trimmed().split('\n');
    ASSERT_EQ(lines.size(), 7);
    for (qsizetype damaged = 0; damaged < lines.size(); ++damaged) {
        QList<QByteArray> changed = lines;
        changed[damaged][3] = '\0';
        const auto read = Read(changed.join('\n'));
        ASSERT_TRUE(read);
        EXPECT_GE(read->damage.size(), 1) << damaged;
        EXPECT_EQ(read->workspace.trace.has_value(), damaged != 1);
        EXPECT_EQ(read->workspace.lines.empty(), damaged == 2);
        EXPECT_EQ(read->workspace.position.has_value(), damaged != 3);
        EXPECT_EQ(read->workspace.layout.isEmpty(), damaged == 4);
        EXPECT_EQ(read->workspace.texts.size(), damaged >= 5 ? 1U : 2U);
    }
}

TEST_F(WorkspaceFileTest, LayoutIsOnlyTakenWhole) {
    ASSERT_EQ(WriteWorkspace(path_, Sample()), "");
    const QByteArray text = Sample().layout.toBase64();
    QByteArray other = text;
    other[2] = other[2] == 'A' ? 'B' : 'A';
    const auto read = Read(Bytes().replace(text, other));
    ASSERT_TRUE(read);
    EXPECT_TRUE(read->workspace.layout.isEmpty());
    EXPECT_EQ(read->damage, QStringList("Line 5 could not be read."));
}

TEST_F(WorkspaceFileTest, ReadsWhatIsLeftAtEveryLength) {
    ASSERT_EQ(WriteWorkspace(path_, Sample()), "");
    const QByteArray bytes = Bytes();
    const QByteArray first = bytes.left(bytes.indexOf('\n'));
    for (qsizetype length = 0; length < bytes.size(); ++length) {
        const auto read = Read(bytes.left(length));
        EXPECT_EQ(static_cast<bool>(read), length >= first.size()) << length;
    }
}

TEST_F(WorkspaceFileTest, HoldsNoMoreThanAWorkspaceCan) {
    const QByteArray head = "{\"format\":\"kvx-workspace\",\"version\":1}\n";
    for (const QByteArray& bracket : {QByteArray("["), QByteArray("{\"a\":")}) {
        const auto deep =
            Read(head + bracket.repeated(100'000) + "\n{\"trace\":\"demonstration\"}\n");
        ASSERT_TRUE(deep);
        EXPECT_EQ(deep->damage, QStringList("Line 2 could not be read."));
        EXPECT_EQ(deep->workspace.trace, WorkspaceTrace{}) << "the lines after it are read";
    }
    const auto brackets =
        Read(head + "{\"key\":\"a\",\"text\":\"" + QByteArray(1000, '[') + "\"}\n");
    ASSERT_TRUE(brackets);
    EXPECT_EQ(brackets->workspace.texts.at("a").size(), 1000) << "brackets of a text nest nothing";

    const auto noLines = Read(head + QByteArray("x\n").repeated(1000));
    ASSERT_TRUE(noLines);
    EXPECT_EQ(noLines->damage.size(), 100);
    QByteArray texts = head;
    for (int i = 0; i < 5000; ++i) {
        texts += "{\"key\":\"" + QByteArray::number(i) + "\",\"text\":\"\"}\n";
    }
    EXPECT_EQ(Read(texts)->workspace.texts.size(), 4096U);
    const QByteArray lines = QByteArray("[2,1,true],").repeated(200'000);
    const auto manyLines = Read(head + "{\"lines\":[" + lines.chopped(1) + "]}\n");
    EXPECT_TRUE(manyLines->workspace.lines.empty());
    EXPECT_EQ(manyLines->damage, QStringList("Line 2 could not be read."));
}

TEST_F(WorkspaceFileTest, WrongKindsOfValuesAreDamage) {
    const QByteArray head = R"({"format":"kvx-workspace","version":1})"
                            "\n";
    for (const char* line : {R"({"trace":"file","path":7})",
                             R"({"trace":"file","path":""})",
                             R"({"trace":"file","path":"a","processor":-1})",
                             R"({"trace":"file","path":"a","processor":4294967296})",
                             R"({"trace":"other"})",
                             R"({"trace":null})",
                             R"({"lines":7})",
                             R"({"lines":[[1,2]]})",
                             R"({"lines":[[1,2,3]]})",
                             R"({"display":[1,2],"markers":[1,2,3]})",
                             R"({"display":[1,2,3]})",
                             R"({"display":[1,2,"3"],"markers":[1,2,3]})",
                             R"({"display":[1,2,1e999],"markers":[1,2,3]})",
                             R"({"layout":7,"check":1})",
                             R"({"layout":"QUJD"})",
                             R"({"key":7,"text":"a"})",
                             R"({"key":"a","text":7})",
                             R"({"text":"a"})",
                             "[1]",
                             "7",
                             "nonsense",
                             R"({"key":"a","text":"\ud800"})",
                             R"({"unknown":1})"}) {
        const auto read = Read(head + line);
        ASSERT_TRUE(read) << line;
        EXPECT_EQ(read->damage, QStringList("Line 2 could not be read.")) << line;
        EXPECT_FALSE(read->workspace.trace) << line;
        EXPECT_TRUE(read->workspace.texts.empty()) << line;
        EXPECT_TRUE(read->workspace.lines.empty()) << line;
        EXPECT_FALSE(read->workspace.position) << line;
    }
}

TEST_F(WorkspaceFileTest, WhatIsNoWorkspaceIsRefused) {
    for (const char* bytes : {"", "\n\n", "[10] dispatch to task 1.\n", "{}",
                              "\x7f"
                              "ELF"}) {
        const auto read = Read(bytes);
        ASSERT_FALSE(read) << bytes;
        EXPECT_NE(read.GetError().message.find("day.kvxw: this is not a workspace"),
                  std::string::npos);
    }
    EXPECT_FALSE(ReadWorkspace("/nowhere/at/all.kvxw"));
    EXPECT_FALSE(ReadWorkspace(folder_.path()));
    EXPECT_NE(WriteWorkspace("/nowhere/at/all.kvxw", {}), "");
}

}  // namespace
}  // namespace kvx::desktop
