// The words in a photo's UserComment that a rewrite of it has to keep.
#pragma once

#include <string>

#include "media/photo_metadata.h"

namespace kalmora {

// What UserCommentText gives up to its first zero byte, as bytes. What other programs wrote in a way that it
// does not give as words is kept too, since the rewritten comment is one of single bytes: UTF-16 becomes
// UTF-8, and words behind an undefined character code are taken as they are. Empty when there is none.
std::string UserCommentWords(const PhotoMetadata& metadata);

}  // namespace kalmora
