#include "platform/qt/decoding_gate.h"

#include <gtest/gtest.h>

#include <QImage>
#include <latch>
#include <optional>
#include <thread>
#include <vector>

#include "platform/image.h"
#include "support.h"

namespace kalmora::qt {
namespace {

using namespace test;

images::DecodedPicture Decode(const std::string& path, Size wanted) {
    return images::Decode(path, wanted, images::Preview::Never, nullptr);
}

class DecodingGateTest : public FolderTest {
protected:
    ~DecodingGateTest() override { DecodingGate::Instance().Open(); }
};

TEST_F(DecodingGateTest, ClosedItLetsNobodyIn) {
    EXPECT_TRUE(DecodingPass());
    EXPECT_TRUE(DecodingGate::Instance().Close(0));
    EXPECT_TRUE(DecodingGate::Instance().IsClosed());
    EXPECT_FALSE(DecodingPass());
    DecodingGate::Instance().Open();
    EXPECT_TRUE(DecodingPass());
}

TEST_F(DecodingGateTest, ClosingWaitsForThoseInside) {
    std::optional<DecodingPass> pass(std::in_place);
    EXPECT_FALSE(DecodingGate::Instance().Close(1));
    std::thread closing([] { EXPECT_TRUE(DecodingGate::Instance().Close(10'000)); });
    pass.reset();
    closing.join();
}

TEST_F(DecodingGateTest, PicturesAreEmptyWhileItIsClosedAndThereAgainAfterwards) {
    const std::string photo = Write("a.jpg", EncodeJpeg(Quarters(64, 48)));
    const std::string drawing = Save("a.png", Quarters(64, 48));
    EXPECT_TRUE(EndDecoding());
    for (const std::string& path : {photo, drawing}) {
        EXPECT_EQ(Decode(path, Size{}).outcome, images::DecodeOutcome::Unreadable);
        EXPECT_TRUE(Decode(path, Size{}).image.IsEmpty());
    }
    DecodingGate::Instance().Open();
    for (const std::string& path : {photo, drawing}) EXPECT_FALSE(Decode(path, Size{}).image.IsEmpty());
}

TEST_F(DecodingGateTest, EndsInTheMiddleOfManyDecodes) {
    const std::string photo = Write("a.jpg", EncodeJpeg(Noise(2000, 1500), {.isProgressive = true}));
    const std::string drawing = Save("a.png", Noise(200, 150));
    std::latch begun(4);
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&] {
            begun.count_down();
            for (int size = 100; size < 1500; size += 50) {
                Decode(photo, Size{size, size});
                Decode(drawing, Size{size, size});
            }
        });
    begun.wait();
    // The bound inside is half a second; a decode gives up within a row.
    EXPECT_TRUE(EndDecoding());
    for (std::thread& thread : threads) thread.join();
}

}  // namespace
}  // namespace kalmora::qt
