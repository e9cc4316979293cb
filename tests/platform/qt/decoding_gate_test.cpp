#include "platform/qt/decoding_gate.h"

#include <gtest/gtest.h>

#include <QImage>
#include <atomic>
#include <optional>
#include <thread>

#include "platform/image.h"
#include "support.h"

namespace kalmora::qt {
namespace {

using namespace test;

class DecodingGateTest : public FolderTest {
protected:
    DecodingGateTest() { images::ClearCache(); }
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
        EXPECT_TRUE(images::Load(path, Size{}).IsEmpty());
        EXPECT_EQ(images::Measure(path), (Size{64, 48})) << "only the head is read";
    }
    images::Prefetch(photo, Size{});
    images::WaitForPrefetch();
    DecodingGate::Instance().Open();
    for (const std::string& path : {photo, drawing}) {
        EXPECT_FALSE(images::Load(path, Size{}).IsEmpty());
        EXPECT_FALSE(images::Measure(path).IsEmpty());
    }
}

TEST_F(DecodingGateTest, EndsInTheMiddleOfManyDecodes) {
    const std::string photo = Write("a.jpg", EncodeJpeg(Noise(2000, 1500), {.isProgressive = true}));
    const std::string drawing = Save("a.png", Noise(200, 150));
    for (int size = 100; size < 1500; size += 50) {
        images::Prefetch(photo, Size{size, size});
        images::Prefetch(drawing, Size{size, size});
    }
    // The bound inside is half a second; a decode gives up within a row.
    EXPECT_TRUE(EndDecoding());
    images::WaitForPrefetch();
}

}  // namespace
}  // namespace kalmora::qt
