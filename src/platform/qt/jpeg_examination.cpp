#include "platform/jpeg.h"

// The library's header wants the C library's before it.
#include <csetjmp>
#include <cstdio>
// clang-format off
#include <jpeglib.h>
#include <jerror.h>
// clang-format on

#include "platform/qt/decode_limits.h"

namespace kalmora::jpeg {

namespace {

// One reading. The library reports an error by a jump out of its call.
class Reading {
public:
    Examination Run(std::string_view jpeg) {
        codec_.err = jpeg_std_error(&errors_);
        errors_.error_exit = [](j_common_ptr codec) { std::longjmp(Of(codec).jump_, 1); };
        errors_.emit_message = Note;
        errors_.output_message = [](j_common_ptr) {};
        codec_.client_data = this;
        if (setjmp(jump_) == 0) {
            jpeg_create_decompress(&codec_);
            codec_.mem->max_memory_to_use = qt::kMostCoefficientBytes;
            progress_.progress_monitor = Progress;
            codec_.progress = &progress_;
            jpeg_mem_src(&codec_, reinterpret_cast<const unsigned char*>(jpeg.data()), jpeg.size());
            jpeg_read_header(&codec_, TRUE);
            jpeg_read_coefficients(&codec_);
        } else {
            isDamaged_ = true;
        }
        jpeg_destroy_decompress(&codec_);
        if (isDamaged_) return {};
        return {hasStrays_ ? Health::StrayBytes : Health::Sound, strayBeforeEnd_};
    }

private:
    static Reading& Of(j_common_ptr codec) { return *static_cast<Reading*>(codec->client_data); }
    // Called at least once for each row of blocks of each scan.
    static void Progress(j_common_ptr codec) {
        if (reinterpret_cast<const jpeg_decompress_struct*>(codec)->input_scan_number > qt::kMostScans)
            std::longjmp(Of(codec).jump_, 1);
    }
    // A level below zero is a warning: something was passed over or made up.
    static void Note(j_common_ptr codec, int level) {
        if (level >= 0) return;
        Reading& reading = Of(codec);
        if (codec->err->msg_code != JWRN_EXTRANEOUS_DATA) {
            reading.isDamaged_ = true;
            return;
        }
        reading.hasStrays_ = true;
        const int count = codec->err->msg_parm.i[0], marker = codec->err->msg_parm.i[1];
        reading.strayBeforeEnd_ = marker == JPEG_EOI && count > 0 ? static_cast<std::uint64_t>(count) : 0;
    }

    jpeg_decompress_struct codec_{};
    jpeg_error_mgr errors_{};
    jpeg_progress_mgr progress_{};
    std::jmp_buf jump_{};
    std::uint64_t strayBeforeEnd_ = 0;
    bool hasStrays_ = false;
    bool isDamaged_ = false;
};

}  // namespace

Examination Examine(std::string_view jpeg) { return Reading().Run(jpeg); }

}  // namespace kalmora::jpeg
