// A turn that is cut off, or whose tool misbehaves, leaves a whole picture.
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <cstdio>

#include "media/picture_files.h"
#include "media/rotation.h"
#include "rewrite/safe_rewrite.h"
#include "rewrite_fault_fixture.h"

namespace kalmora {
namespace {

using test::ChildEnd;
using test::Fault;
using test::HasScratch;
using test::Read;
using test::Write;

class RotationFaultTest : public test::RewriteFaultTest {
protected:
    RotationFaultTest() { State().settings.PathOfJpegTran = KALMORA_BIN_DIR "/jpegtran"; }
    ~RotationFaultTest() override {
        test::SetFaultPlan({});
        State().settings.PathOfJpegTran.clear();
    }

    std::string PutPicture() const { return Put({"turn.jpg", test::DecodableJpeg(64, 48)}); }
    // A tool that is a shell script; its last two words are the copy and the photo.
    void UseTool(const std::string& script) const {
        const std::string path = files::Join(folder_, "tool");
        Write(path, "#!/bin/sh\nfor target; do :; done\nsource=$5\n" + script + "\n");
        chmod(path.c_str(), 0755);
        State().settings.PathOfJpegTran = path;
    }
};

TEST_F(RotationFaultTest, KilledAtAnyCallThePictureIsTheOldOrTheTurnedOne) {
    if (!files::Exists("/usr/bin/jpegtran")) GTEST_SKIP() << "jpegtran is not installed";
    std::string path = PutPicture();
    const std::string before = Read(path);
    test::SetFaultPlan({});
    ASSERT_EQ(RotateJpeg(path, 90), RotateResult::Turned);
    const int calls = test::CountedCalls();
    const std::string after = Read(path);
    ASSERT_NE(before, after);
    for (const Fault fault : {Fault::KillBefore, Fault::KillHalf, Fault::KillAfter})
        for (int call = 1; call <= calls; ++call) {
            path = PutPicture();
            ASSERT_EQ(test::RunInChild({.fault = fault, .atCall = call}, [&] { RotateJpeg(path, 90); }),
                      ChildEnd::Killed)
                << call;
            RecoverRewrites(State().settings.TempFolder);
            const std::string found = Read(path);
            ASSERT_TRUE(found == before || found == after) << "call " << call << " of " << calls;
            ASSERT_FALSE(HasScratch());
        }
}

TEST_F(RotationFaultTest, KilledAtAnyCallWhatFollowsThePictureIsWhole) {
    if (!files::Exists("/usr/bin/jpegtran")) GTEST_SKIP() << "jpegtran is not installed";
    const std::string small = test::DecodableJpeg(64, 48), movie = std::string(2000, 'm');
    // More than a note holds, so that the file is written from a copy of it.
    std::string large = small;
    for (int i = 0; i < 18; ++i) large.insert(2, test::JpegSegmentBytes(0xFE, std::string(65'000, 'w')));
    for (const std::string& picture : {small, large})
        for (const Fault fault : {Fault::KillBefore, Fault::KillHalf}) {
            if (fault == Fault::KillBefore && picture == large) continue;  // the half is what tears it
            std::string path = Put({"turn.jpg", picture + movie});
            const std::string before = Read(path);
            test::SetFaultPlan({});
            ASSERT_EQ(RotateJpeg(path, 90), RotateResult::Turned);
            const int calls = test::CountedCalls();
            const std::string after = Read(path);
            ASSERT_EQ(after.size(), before.size());
            for (int call = 1; call <= calls; ++call) {
                path = Put({"turn.jpg", before});
                test::RunInChild({.fault = fault, .atCall = call}, [&] { RotateJpeg(path, 90); });
                RecoverRewrites(State().settings.TempFolder);
                const std::string found = Read(path);
                ASSERT_TRUE(found == before || found == after) << "call " << call << " of " << calls;
                ASSERT_FALSE(HasScratch());
            }
        }
}

TEST_F(RotationFaultTest, AToolThatFailsLeavesThePictureAsItWas) {
    const std::string before = test::DecodableJpeg(64, 48);
    for (const char* script : {"exit 1", ": > \"$target\"; exit 0", "rm \"$target\"; exit 0",
                               "head -c 100 \"$source\" > \"$target\"", "echo no picture > \"$target\"",
                               "cat \"$source\" > \"$target\"", "rm \"$target\"; kill -9 $$",
                               "head -c 100 \"$source\" > \"$target\"; exit 3"}) {
        UseTool(script);
        const std::string path = PutPicture();
        EXPECT_EQ(RotateJpeg(path, 90), RotateResult::Failed) << script;
        EXPECT_EQ(Read(path), before) << script;
        EXPECT_FALSE(HasScratch()) << script;
    }
}

TEST_F(RotationFaultTest, KilledWhileTheToolWritesThePictureIsPutBack) {
    // The tool leaves half a picture and lives on; then our own process dies in the call behind it.
    UseTool("head -c 100 \"$source\" > \"$target\"");
    std::string path = PutPicture();
    const std::string before = Read(path);
    test::SetFaultPlan({});
    RotateJpeg(path, 90);
    const int calls = test::CountedCalls();
    for (int call = 1; call <= calls; ++call) {
        path = PutPicture();
        test::RunInChild({.fault = Fault::KillBefore, .atCall = call}, [&] { RotateJpeg(path, 90); });
        RecoverRewrites(State().settings.TempFolder);
        ASSERT_EQ(Read(path), before) << call;
    }
}

TEST_F(RotationFaultTest, WhatAnotherProgramPutsInItsPlaceAtAnyCallStands) {
    const std::string original = files::Join(folder_, "original"), made = files::Join(folder_, "made");
    Write(original, test::DecodableJpeg(64, 48));
    Write(made, test::DecodableJpeg(48, 64));
    UseTool("cmp -s \"$source\" '" + original + "' && cp '" + made +
            "' \"$target\" || cp \"$source\" \"$target\"");
    const std::string other = test::DecodableJpeg(32, 32);
    std::string path = PutPicture();
    test::SetFaultPlan({});
    ASSERT_EQ(RotateJpeg(path, 90), RotateResult::Turned);
    const int calls = test::CountedCalls();
    int turned = 0;
    for (int call = 1; call <= calls; ++call) {
        path = PutPicture();
        const std::string theirs = path + ".theirs";
        Write(theirs, other);
        test::FaultPlan plan{.fault = Fault::Meddle, .atCall = call};
        plan.meddle = [&] { ASSERT_EQ(std::rename(theirs.c_str(), path.c_str()), 0); };
        test::SetFaultPlan(plan);
        const RotateResult result = RotateJpeg(path, 90);
        test::SetFaultPlan({});
        RecoverRewrites(State().settings.TempFolder);
        turned += result == RotateResult::Turned ? 1 : 0;
        ASSERT_EQ(Read(path), other) << call << " of " << calls;
        ASSERT_FALSE(HasScratch()) << call;
    }
    EXPECT_LT(turned, calls);
}

}  // namespace
}  // namespace kalmora
