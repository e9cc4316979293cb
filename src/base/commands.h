// The numbers of the commands, as key files and hot keys know them.
#pragma once

namespace kalmora {

enum Command : int {
    kCommandShow = 1001,
    kCommandExit = 1002,
    kCommandOuterNext = 1010,
    kCommandNext = 1011,
    kCommandPrevious = 1012,
    kCommandOuterPrevious = 1013,
    kCommandToday = 1014,
    kCommandRandom = 1015,
    kCommandJump = 1016,
    kCommandToYearly = 1017,
    kCommandLevelUp = 1018,
    kCommandOpenTodayLevel = 1019,
    kCommandHide = 1020,
    kCommandReload = 1021,
    kCommandAllView = 1022,
    kCommandAutoNavigate = 1023,
    kCommandPublicMode = 1024,
    kCommandGoodMode = 1025,
    kCommandSound = 1026,
    kCommandPause = 1027,
    kCommandMusicForward = 1030,
    kCommandMusicBack = 1031,
    kCommandSearch = 1041,
    kCommandUpdateMonth = 1043,
    kCommandAmazon = 1046,
    kCommandTravel = 1047,
    kCommandGoogleCalendar = 1048,
    kCommandTwitter = 1049,
    kCommandOpenFolder = 1050,
    kCommandOpenSlideShow = 1051,
    kCommandCloseSlideShow = 1052,
    kCommandRotate90 = 1060,
    kCommandRotate270 = 1062,
    kCommandThumbnailLarger = 1120,
    kCommandThumbnailSmaller = 1121,
    kCommandImport = 1200,
};

}  // namespace kalmora
