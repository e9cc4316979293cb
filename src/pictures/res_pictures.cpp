#include "pictures/res_pictures.h"

#include <cstdio>
#include <map>
#include <mutex>

#include "pictures/picture_cache.h"
#include "platform/files.h"
#include "store/resources.h"

namespace kalmora {

namespace {

std::string Numbered(const char* folder, int number) {
    char name[48];
    std::snprintf(name, sizeof name, "Res/%s/%02d.png", folder, number);
    return name;
}

std::string DoubleSizeName(const std::string& name) {
    const std::size_t dot = name.rfind('.');
    return dot == std::string::npos ? name : name.substr(0, dot) + "@2x" + name.substr(dot);
}

}  // namespace

std::string MonthPictureName(int month) { return Numbered("Month", month); }

std::string HourPictureName(int hour) { return Numbered("Time", hour); }

std::string WeekdayPictureName(int column, WeekdayDrawing drawing) {
    static const char* const names[7] = {"Monday", "Tuesday",  "Wednesday", "Thursday",
                                         "Friday", "Saturday", "Sunday"};
    if (column < 0 || column >= 7) return {};
    return std::string("Res/Week/") + names[column] + (drawing == WeekdayDrawing::Plain ? "_small" : "") +
           ".png";
}

Size MeasureResPicture(const std::string& name) {
    static std::mutex mutex;
    static std::map<std::string, Size>* const sizes = new std::map<std::string, Size>;  // guarded by mutex
    {
        std::lock_guard lock(mutex);
        if (const auto found = sizes->find(name); found != sizes->end()) return found->second;
    }
    const Size size = Pictures().Measure(FindResource(name));
    if (size.IsEmpty()) return size;  // may be installed later: asked again next time
    std::lock_guard lock(mutex);
    return (*sizes)[name] = size;
}

Image LoadResPicture(const std::string& name, Size logical, double scale) {
    const Size natural = MeasureResPicture(name);
    if (natural.IsEmpty() || logical.IsEmpty()) return {};
    const Size wanted{static_cast<int>(logical.width * scale + 0.5),
                      static_cast<int>(logical.height * scale + 0.5)};
    if (wanted.width > natural.width || wanted.height > natural.height) {
        const std::string sharper = FindResource(DoubleSizeName(name));
        if (files::Exists(sharper)) return Pictures().Load(sharper, {}, images::Preview::Never);
    }
    return Pictures().Load(FindResource(name), {}, images::Preview::Never);
}

}  // namespace kalmora
