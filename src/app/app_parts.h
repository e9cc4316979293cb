// Whom commands, events and the heartbeat can ask for something: the parts of the program by name. App makes
// them and hands them over; a test hands over its own.
#pragma once

#include "app/rooms_above.h"
#include "app/services.h"
#include "views/model/view_partners.h"

namespace kalmora {

class Heartbeat;
class KeyConfig;
class Tray;
struct CalendarStore;

struct AppParts {
    CalendarStore& calendar;
    SlideShow& slideShow;
    PictureWindow& neighbor;
    MusicPlayer& music;
    FilterWindow& filter;
    RatingPetals& petals;
    NoteEditor& editor;
    TextScraps& scraps;
    DragSource& dragSource;
    Screenshots& screenshots;
    Getters& getters;
    Importer& importer;
    SearchQuestion& searchQuestion;
    IndexUpdates& indexUpdates;
    PhotoRater& photoRater;
    KeyConfig& keys;
    Tray& tray;
    Heartbeat& heartbeat;
};

}  // namespace kalmora
