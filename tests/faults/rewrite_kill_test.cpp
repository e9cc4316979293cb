// A rewrite that is cut off at any system call leaves the old photo or the new one, whole; one that meets an
// error says so and leaves the same.
#include <gmock/gmock.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>

#include "rewrite/safe_rewrite.h"
#include "rewrite_fault_fixture.h"

namespace kalmora {
namespace {

using test::AllWork;
using test::ChildEnd;
using test::Fault;
using test::FaultPlan;
using test::HasScratch;
using test::Read;
using test::RewriteFaultTest;
using test::Work;

struct Tally {
    int kills = 0, torn = 0, old = 0, fresh = 0;
};

class RewriteKillTest : public RewriteFaultTest {
protected:
    explicit RewriteKillTest(Place place = Place::Memory) : RewriteFaultTest(place) {}

    void KillEverywhere(const std::vector<Photo>& photos, Tally& tally) const {
        for (const Photo& photo : photos)
            for (const Work& work : AllWork()) {
                const Course course = Try(photo, work);
                if (course.result != RewriteResult::Written) {
                    EXPECT_EQ(course.before, course.after) << photo.name << ", " << work.name;
                    continue;
                }
                for (const Fault fault : {Fault::KillBefore, Fault::KillHalf, Fault::KillAfter})
                    for (int call = 1; call <= course.calls; ++call) {
                        SCOPED_TRACE(photo.name + ", " + work.name + ", call " + std::to_string(call) +
                                     ", kill " + std::to_string(static_cast<int>(fault)));
                        ASSERT_NO_FATAL_FAILURE(KillOnce(photo.name, work, course, fault, call, tally));
                    }
            }
    }

private:
    void KillOnce(const std::string& name, const Work& work, const Course& course, Fault fault, int call,
                  Tally& tally) const {
        const std::string path = Put({name, course.before});
        const FaultPlan plan{.fault = fault, .atCall = call, .withoutInsertion = work.withoutInsertion};
        const ChildEnd end = test::RunInChild(plan, [&] {
            PhotoFile object(path);
            work.write(object);
        });
        ASSERT_EQ(end, ChildEnd::Killed);
        ++tally.kills;
        if (const std::string left = Read(path); left != course.before && left != course.after) ++tally.torn;
        RecoverRewrites(State().settings.TempFolder);
        const std::string found = Read(path);
        ++(found == course.after ? tally.fresh : tally.old);
        ASSERT_TRUE(found == course.before || found == course.after);
        ASSERT_FALSE(HasScratch());
    }
};

// With the file system's own insertion of space.
class RewriteKillOnDiskTest : public RewriteKillTest {
protected:
    RewriteKillOnDiskTest() : RewriteKillTest(Place::Disk) {}
};

TEST_F(RewriteKillTest, AtAnyCallThePhotoIsTheOldOrTheNewOne) {
    Tally tally;
    KillEverywhere(Photos(), tally);
    std::cout << tally.kills << " kills, " << tally.torn << " torn photos mended; " << tally.old
              << " times the old photo, " << tally.fresh << " times the new one\n";
    EXPECT_GT(tally.kills, 500);
    EXPECT_GT(tally.torn, 50);
    EXPECT_GT(tally.old, 0);
    EXPECT_GT(tally.fresh, 0);
}

TEST_F(RewriteKillOnDiskTest, AtAnyCallThePhotoIsTheOldOrTheNewOne) {
    Tally tally;
    std::vector<Photo> photos = BuiltPhotos();
    photos.resize(2);
    KillEverywhere(photos, tally);
    EXPECT_GT(tally.kills, 100);
}

// The mending can be cut off as well.
TEST_F(RewriteKillTest, WhileMendingThePhotoIsMendedByTheNextStart) {
    int kills = 0;
    const std::vector<Photo> photos = BuiltPhotos();
    for (const Photo& photo : photos) {
        for (const Work& work : AllWork()) {
            const Course course = Try(photo, work);
            const Photo start{photo.name, course.before};
            for (int call = 1; call <= course.calls; ++call) {
                for (int mendingCall = 1;; ++mendingCall) {
                    const std::string path = Put(start);
                    test::RunInChild(
                        {.fault = Fault::KillHalf, .atCall = call, .withoutInsertion = work.withoutInsertion},
                        [&] {
                            PhotoFile object(path);
                            work.write(object);
                        });
                    const ChildEnd end =
                        test::RunInChild({.fault = Fault::KillHalf, .atCall = mendingCall},
                                         [] { RecoverRewrites(State().settings.TempFolder); });
                    if (end == ChildEnd::Finished) break;
                    ++kills;
                    RecoverRewrites(State().settings.TempFolder);
                    const std::string found = Read(path);
                    ASSERT_TRUE(found == course.before || found == course.after)
                        << photo.name << ", " << work.name << ", call " << call << ", mending call "
                        << mendingCall;
                }
            }
        }
    }
    EXPECT_GT(kills, 100);
}

// Many photos rewritten with one strategy share one journal.
TEST_F(RewriteKillTest, AmongManyEachPhotoIsTheOldOrTheNewOne) {
    std::vector<Photo> photos = Photos();
    photos.resize(std::min<std::size_t>(photos.size(), 20));
    std::vector<std::string> paths, old, fresh;
    const auto rateAll = [&] {
        std::vector<PhotoFile> objects;
        for (const std::string& path : paths) objects.emplace_back(path);
        EstimateAll(objects, EstimateType::Good);
    };
    const auto putAll = [&] {
        paths.clear();
        for (const Photo& photo : photos) paths.push_back(Put(photo));
    };
    putAll();
    for (const std::string& path : paths) old.push_back(Read(path));
    test::SetFaultPlan({});
    rateAll();
    const int calls = test::CountedCalls();
    for (const std::string& path : paths) fresh.push_back(Read(path));
    EXPECT_NE(old, fresh);
    for (int call = 1; call <= calls; ++call) {
        putAll();
        ASSERT_EQ(test::RunInChild({.fault = Fault::KillHalf, .atCall = call}, rateAll), ChildEnd::Killed);
        RecoverRewrites(State().settings.TempFolder);
        for (std::size_t i = 0; i < paths.size(); ++i) {
            const std::string found = Read(paths[i]);
            ASSERT_TRUE(found == old[i] || found == fresh[i]) << photos[i].name << ", call " << call;
        }
    }
}

TEST_F(RewriteFaultTest, AnErrorAtAnyCallIsToldAndLeavesThePhotoWhole) {
    std::vector<Photo> photos = Photos();
    photos.resize(std::min<std::size_t>(photos.size(), 12));
    int reported = 0;
    for (const Photo& photo : photos) {
        for (const Work& work : AllWork()) {
            const Course course = Try(photo, work);
            if (course.result != RewriteResult::Written) continue;
            const Photo start{photo.name, course.before};
            for (const int error : {ENOSPC, EIO, EROFS, EACCES}) {
                for (const bool lasting : {false, true}) {
                    for (int call = 1; call <= course.calls; ++call) {
                        const std::string path = Put(start);
                        const auto at = [&] {
                            return photo.name + ", " + work.name + ", call " + std::to_string(call) +
                                   ", error " + std::to_string(error) + (lasting ? " on" : "");
                        };
                        PhotoFile object(path);
                        test::SetFaultPlan({Fault::Fail, call, error, lasting, work.withoutInsertion});
                        const RewriteResult result = work.write(object);
                        test::SetFaultPlan({});
                        if (!lasting) {
                            // What could be put back is there at once.
                            const std::string now = Read(path);
                            ASSERT_TRUE(now == course.before || now == course.after) << at();
                            if (result == RewriteResult::Written) {
                                ASSERT_EQ(now, course.after) << at();
                            } else {
                                ASSERT_EQ(now, course.before) << at();
                            }
                        }
                        if (!IsDone(result)) ++reported;
                        RecoverRewrites(State().settings.TempFolder);
                        const std::string found = Read(path);
                        ASSERT_TRUE(found == course.before || found == course.after) << at();
                        if (result == RewriteResult::Written) {
                            ASSERT_EQ(found, course.after) << at();
                        }
                        ASSERT_FALSE(HasScratch()) << at();
                    }
                }
            }
        }
    }
    std::cout << reported << " errors reported\n";
    EXPECT_GT(reported, 500);
}

// Another program saves the photo its own way, at any moment of ours: what it saved is kept.
TEST_F(RewriteFaultTest, WhatAnotherProgramPutsInItsPlaceAtAnyCallStands) {
    const std::string other = "the other program's photo";
    int refused = 0, late = 0;
    for (const Photo& photo : BuiltPhotos()) {
        for (const Work& work : AllWork()) {
            const Course course = Try(photo, work);
            ASSERT_EQ(course.result, RewriteResult::Written);
            for (int call = 1; call <= course.calls; ++call) {
                const std::string path = Put({photo.name, course.before}), theirs = path + ".theirs";
                test::Write(theirs, other);
                PhotoFile object(path);
                FaultPlan plan{
                    .fault = Fault::Meddle, .atCall = call, .withoutInsertion = work.withoutInsertion};
                plan.meddle = [&] { ASSERT_EQ(std::rename(theirs.c_str(), path.c_str()), 0); };
                test::SetFaultPlan(plan);
                const RewriteResult result = work.write(object);
                test::SetFaultPlan({});
                ++(result == RewriteResult::Written ? late : refused);
                ASSERT_EQ(Read(path), other) << photo.name << ", " << work.name << ", call " << call;
                ASSERT_FALSE(HasScratch());
                RecoverRewrites(State().settings.TempFolder);
                ASSERT_EQ(Read(path), other) << photo.name << ", " << work.name << ", call " << call;
            }
        }
    }
    EXPECT_GT(refused, late);
}

}  // namespace
}  // namespace kalmora
