#include "life.h"

#include <algorithm>
#include <array>
#include <map>

#include "scenes.h"

namespace sample {

namespace {

using Painter = void (*)(Stage&);

// A kind of picture: in which months it can be taken, between which hours, and what is said of it.
struct Kind {
    Painter paint;
    std::uint32_t months;  // bit 1 January to bit 12 December
    float from;
    float to;
    bool indoors;
    bool upright;  // looks well in portrait format
    const char* english;
    const char* japanese;
};

constexpr std::uint32_t Months(int first, int last) {
    std::uint32_t bits = 0;
    for (int month = first;; month = month % 12 + 1) {
        bits |= 1u << month;
        if (month == last) {
            return bits;
        }
    }
}
constexpr std::uint32_t always = Months(1, 12);

constexpr Kind kinds[] = {
    {MountainLake, Months(4, 11), 6.5f, 17.3f, false, false,
     "Not a breath of wind. The lake was a mirror until the first boat.", "風がなくて、湖が鏡のようだった"},
    {RainbowHills, Months(5, 10), 15.0f, 17.0f, false, false, "Ten minutes after the shower!",
     "雨あがりの虹。二重だった"},
    {Balloons, Months(5, 11), 6.0f, 8.0f, false, true, "Up at five for this. Worth every yawn.",
     "早起きして気球を見に行った"},
    {FieldRows, Months(5, 9), 8.5f, 17.0f, false, false, "You could smell it from the bus stop.",
     "風の匂いまで写ればいいのに"},
    {SnowForest, Months(12, 2), 7.2f, 16.3f, false, true, "Nobody had walked here before us.",
     "いちばん乗りの足跡"},
    {SnowMan, Months(12, 2), 9.0f, 15.5f, false, true, "Hana insisted on the scarf.", "はなが作った雪だるま"},
    {Beach, Months(6, 9), 8.5f, 16.5f, false, false, "Sand in the sandwiches again.",
     "海の日。みんな真っ黒に焼けた"},
    {SunsetSea, Months(4, 11), 17.7f, 18.6f, false, true, "We stayed until it was gone.",
     "日が沈むまで見ていた"},
    {Harbour, Months(3, 11), 8.5f, 17.0f, false, false, "Breakfast on the quay, fish straight from the boat.",
     "港町の朝"},
    {Aquarium, always, 10.5f, 15.5f, true, true, "She did not want to leave the jellyfish.",
     "くらげの水槽から動かない"},
    {CherryTrees, Months(4, 4), 8.0f, 17.0f, false, false, "Full bloom, two days earlier than last year.",
     "満開。去年より二日早い"},
    {MapleBranch, Months(10, 12), 9.5f, 15.0f, false, true, "The red behind the temple.", "お寺の裏のもみじ"},
    {TreeAvenue, Months(10, 11), 8.5f, 16.3f, false, true, "The ginkgo avenue is a yellow tunnel now.",
     "いちょう並木、黄色いトンネル"},
    {FlowerMeadow, Months(4, 10), 8.5f, 17.0f, false, true, "Found this on the way home, by the river.",
     "川べりの花畑"},
    {FlowerMacro, Months(3, 11), 8.5f, 16.5f, false, true, "First one in our garden this year.",
     "庭で今年はじめて咲いた"},
    {Hydrangea, Months(6, 7), 8.5f, 17.5f, false, true, "Best on a rainy day.", "雨の日がいちばんきれい"},
    {Bamboo, Months(3, 12), 9.0f, 15.5f, false, true, "Cool and green, even at noon.", "竹林は昼でも涼しい"},
    {Sunflowers, Months(7, 9), 8.5f, 17.0f, false, false, "All of them look at the same thing.",
     "ひまわりの海"},
    {MilkyWay, Months(5, 11), 21.0f, 23.5f, false, true, "Thirty seconds, tripod on the car roof.",
     "三脚を忘れて車の屋根で撮った"},
    {MoonPampas, Months(9, 11), 19.0f, 19.9f, false, true, "Dumplings are ready.", "お月見。だんごは十五個"},
    {Fireworks, Months(7, 8), 19.6f, 20.8f, false, true, "The last three minutes were one great noise.",
     "最後の三分がすごかった"},
    {NightSkyline, always, 18.8f, 21.5f, false, false, "From the ferry, last trip of the day.",
     "最終の船から"},
    {Lanterns, Months(7, 9), 18.8f, 20.2f, false, true, "Grilled corn, goldfish, and home by nine.",
     "夏祭り。とうもろこしが焦げた"},
    {Concert, always, 18.8f, 21.0f, true, true, "They played the old one as an encore!",
     "アンコールはあの曲だった"},
    {WinterLights, Months(11, 1), 17.8f, 20.5f, false, true, "The lights are up.", "イルミネーション点灯"},
    {RainStreet, always, 8.5f, 21.0f, false, true, "Everyone forgot the same umbrella.",
     "急な雨で傘の花が咲いた"},
    {TrainWindow, always, 7.5f, 16.8f, true, false, "Left-hand side, as grandfather always says.",
     "左側の席がよく見える"},
    {ShrineGate, always, 8.0f, 18.4f, false, true, "High tide at just the right moment.",
     "ちょうど満潮だった"},
    {Pagoda, Months(3, 12), 8.5f, 18.3f, false, true, "1 200 steps. Counted.", "石段は千二百段"},
    {CarpStreamers, Months(4, 5), 9.0f, 15.5f, false, true, "One for each of us.", "家族の数だけ泳いでいる"},
    {DogWalk, always, 17.4f, 18.5f, false, true, "Evening round with Coco.", "ココと夕方の散歩"},
    {CoffeeCup, always, 9.0f, 16.5f, true, true, "The fern turned out this time.", "今日のラテは上出来"},
    {FruitBowl, always, 9.0f, 16.0f, true, false, "From grandmother's garden.", "おばあちゃんの庭から"},
    {BirthdayCake, 0, 18.5f, 20.5f, true, true, "Blow!", "お誕生日おめでとう！"},
    {Breakfast, always, 7.2f, 9.0f, true, false, "Sunday breakfast by Ken.", "日曜の朝ごはんはケンの係"},
    {CatWindow, always, 7.5f, 17.0f, true, true, "Momo, on duty.", "モモは今日も見張り番"},
    {BookLamp, always, 19.5f, 23.0f, true, true, "One more chapter.", "あと一章だけ"},
};

const Kind& KindOf(Painter paint) {
    return *std::find_if(std::begin(kinds), std::end(kinds),
                         [&](const Kind& kind) { return kind.paint == paint; });
}

// What happens every year, or in some of the years only.
struct Event {
    int month;
    int day;
    int days;
    std::uint32_t years;  // bit 0 this year, bit 1 last year ...
    std::array<Painter, 5> scenes;
};

constexpr Event events[] = {
    {1, 1, 1, 0xF, {ShrineGate, Breakfast, DogWalk, nullptr, nullptr}},
    {1, 10, 1, 0x5, {SnowMan, CatWindow, nullptr, nullptr, nullptr}},
    {1, 25, 2, 0xA, {TrainWindow, SnowForest, SnowMan, MilkyWay, nullptr}},
    {2, 11, 1, 0x6, {SnowForest, BookLamp, nullptr, nullptr, nullptr}},
    {2, 14, 1, 0xF, {CoffeeCup, BirthdayCake, CatWindow, nullptr, nullptr}},
    {3, 6, 1, 0x9, {Aquarium, NightSkyline, nullptr, nullptr, nullptr}},
    {3, 20, 2, 0x6, {TrainWindow, Harbour, Bamboo, FlowerMacro, nullptr}},
    {4, 3, 2, 0xF, {CherryTrees, CherryTrees, Pagoda, DogWalk, nullptr}},
    {4, 20, 1, 0xF, {BirthdayCake, FlowerMeadow, CatWindow, nullptr, nullptr}},
    {5, 3, 3, 0xF, {CarpStreamers, MountainLake, FieldRows, Bamboo, TrainWindow}},
    {5, 23, 1, 0xA, {FlowerMeadow, Balloons, FlowerMacro, nullptr, nullptr}},
    {6, 13, 1, 0xF, {Hydrangea, RainStreet, CoffeeCup, nullptr, nullptr}},
    {6, 28, 1, 0x5, {RainbowHills, FlowerMacro, nullptr, nullptr, nullptr}},
    {7, 12, 2, 0xA, {FieldRows, RainbowHills, MountainLake, MilkyWay, nullptr}},
    {7, 24, 2, 0xF, {Beach, Lanterns, SunsetSea, Beach, nullptr}},
    {8, 2, 1, 0xF, {Fireworks, Fireworks, Lanterns, nullptr, nullptr}},
    {8, 12, 3, 0xF, {Sunflowers, MilkyWay, Beach, SunsetSea, Harbour}},
    {8, 23, 1, 0x6, {Aquarium, FruitBowl, nullptr, nullptr, nullptr}},
    {9, 15, 1, 0xF, {MoonPampas, FlowerMeadow, nullptr, nullptr, nullptr}},
    {9, 27, 1, 0x9, {Concert, NightSkyline, nullptr, nullptr, nullptr}},
    {10, 10, 2, 0xF, {Balloons, Balloons, FlowerMeadow, MountainLake, nullptr}},
    {10, 25, 1, 0x5, {FruitBowl, DogWalk, SunsetSea, nullptr, nullptr}},
    {11, 3, 2, 0xF, {MapleBranch, Pagoda, TreeAvenue, TrainWindow, nullptr}},
    {11, 22, 2, 0xF, {MapleBranch, TreeAvenue, MountainLake, ShrineGate, nullptr}},
    {12, 12, 1, 0xF, {WinterLights, Concert, WinterLights, nullptr, nullptr}},
    {12, 24, 2, 0xF, {BirthdayCake, WinterLights, SnowForest, CatWindow, nullptr}},
    {12, 31, 1, 0x6, {NightSkyline, BookLamp, nullptr, nullptr, nullptr}},
};

Weather WeatherOf(const Stamp& day, Painter paint, std::uint64_t seed) {
    if (paint == RainStreet || paint == Hydrangea) {
        return Weather::Rain;
    }
    Rng rng(seed ^ static_cast<std::uint64_t>(DayOf(day).time_since_epoch().count()) * 7919u);
    const float draw = rng.Unit();
    return draw < 0.35f ? Weather::Clear : draw < 0.85f ? Weather::Fair : Weather::Cloudy;
}

class Planner {
public:
    Planner(const Stamp& today, int count, std::uint64_t seed)
        : today_(today), count_(count), seed_(seed), rng_(seed) {}

    Life Plan() {
        FillThisMonth();
        FillOlderYears();
        std::stable_sort(life_.shots.begin(), life_.shots.end(),
                         [](const Shot& a, const Shot& b) { return a.when < b.when; });
        NameAndRate();
        life_.notes = WriteNotes(today_);
        DrawAndFilm();
        return std::move(life_);
    }

private:
    void Add(const Stamp& day, Painter paint) {
        const Kind& kind = KindOf(paint);
        Shot shot;
        shot.when = day;
        const float hour = rng_.Range(kind.from, kind.to);
        shot.when.hour = static_cast<int>(hour);
        shot.when.minute = static_cast<int>((hour - std::floor(hour)) * 60.0f);
        shot.when.second = rng_.Pick(0, 59);
        shot.paint = paint;
        shot.indoors = kind.indoors;
        shot.weather = WeatherOf(day, paint, seed_);
        shot.seed = rng_.Next();
        const float format = rng_.Unit();
        if (kind.upright && format < 0.34f) {
            std::swap(shot.width, shot.height);
        } else if (format > 0.94f) {
            shot.height = 1200;
            shot.width = 1200;
        } else if (format > 0.86f) {
            shot.height = 900;
        }
        life_.shots.push_back(shot);
    }

    // Scenes that fit the month, each once before any comes again.
    Painter Draw(int month) {
        std::vector<Painter>& deck = decks_[month];
        if (deck.empty()) {
            for (const Kind& kind : kinds) {
                if (kind.months >> month & 1u) {
                    deck.push_back(kind.paint);
                }
            }
            for (std::size_t i = deck.size() - 1; i > 0; --i) {
                std::swap(deck[i], deck[static_cast<std::size_t>(rng_.Pick(0, static_cast<int>(i)))]);
            }
        }
        const Painter paint = deck.back();
        deck.pop_back();
        return paint;
    }

    const Event* EventOn(const Stamp& day) const {
        for (const Event& event : events) {
            if (event.month == day.month && day.day >= event.day && day.day < event.day + event.days &&
                (event.years >> std::min(today_.year - day.year, 3) & 1u)) {
                return &event;
            }
        }
        return nullptr;
    }

    void FillThisMonth() {
        Stamp day = today_;
        const unsigned last = static_cast<unsigned>(
            std::chrono::year_month_day_last(std::chrono::year(day.year) / day.month / std::chrono::last)
                .day());
        int spare = count_ * 3 / 10 - static_cast<int>(last);  // beyond the one of each day
        for (day.day = 1; day.day <= static_cast<int>(last); ++day.day) {
            const std::chrono::weekday weekday(DayOf(day));
            const bool weekend = weekday == std::chrono::Saturday || weekday == std::chrono::Sunday;
            int shots = 1;
            if (spare > 0) {
                shots += weekend ? rng_.Pick(1, 3) : rng_.Chance(0.6f) ? 1 : 0;
                if (day.day == today_.day) {
                    shots = std::max(shots, 4);
                }
                spare -= shots - 1;
            }
            const Event* event = EventOn(day);
            for (int i = 0; i < shots; ++i) {
                const Painter planned = event && i < 5 ? event->scenes[static_cast<std::size_t>(i)] : nullptr;
                Add(day, planned ? planned : Draw(day.month));
            }
        }
    }

    void FillOlderYears() {
        struct Occasion {
            Stamp first;
            const Event* event;
        };
        std::vector<Occasion> occasions;
        Stamp monthStart = today_;
        monthStart.day = 1;
        const auto end = DayOf(monthStart);
        const auto begin = end - std::chrono::days(3 * 365);
        for (int back = 0; back <= 3; ++back) {
            for (const Event& event : events) {
                Stamp first = today_;
                first.year -= back;
                first.month = event.month;
                first.day = event.day;
                if (DayOf(first) >= begin && DayOf(first) < end && (event.years >> back & 1u)) {
                    occasions.push_back({first, &event});
                }
            }
        }
        // Round after round each occasion gets one more picture; now and then a plain day has one too.
        for (int round = 0; round < 40; ++round) {
            for (const Occasion& occasion : occasions) {
                if (static_cast<int>(life_.shots.size()) >= count_) {
                    return;
                }
                const auto offset = std::chrono::days(
                    round < occasion.event->days ? round : rng_.Pick(0, occasion.event->days - 1));
                const Stamp day = StampOf(DayOf(occasion.first) + offset);
                Painter paint = round < 5 ? occasion.event->scenes[static_cast<std::size_t>(round)] : nullptr;
                if (!paint) {
                    if (round > 2 && round < 5) {
                        continue;
                    }
                    const Stamp plain = StampOf(DayOf(day) + std::chrono::days(rng_.Pick(3, 9)));
                    if (DayOf(plain) < end) {
                        Add(plain, Draw(plain.month));
                    }
                    continue;
                }
                Add(day, paint);
            }
        }
    }

    void NameAndRate() {
        std::array<int, 3> serial = {118, 2041, 12};
        int index = 0;
        int rated = 0;
        for (Shot& shot : life_.shots) {
            Rng rng(seed_ * 31 + static_cast<std::uint64_t>(index));
            // The old compact camera gave way to the better ones; one family member keeps the small one.
            const int age = today_.year - shot.when.year;
            shot.camera = age >= 2            ? (rng.Chance(0.7f) ? 2 : 0)
                          : rng.Chance(0.62f) ? 0
                          : rng.Chance(0.75f) ? 1
                                              : 2;
            int& number = serial[static_cast<std::size_t>(shot.camera)];
            number += rng.Pick(1, 4);
            shot.fileName = shot.camera == 0 ? Format("IMG_%04d.JPG", number % 10000)
                            : shot.camera == 1
                                ? Format("DSCF%04d.JPG", number % 10000)
                                : Format("P%X%02d%04d.jpg", static_cast<unsigned>(shot.when.month),
                                         shot.when.day, number % 10000);
            if (shot.height > shot.width && rng.Chance(0.7f)) {
                shot.orientation = rng.Chance(0.75f) ? 6 : 8;
            }
            const Kind& kind = KindOf(shot.paint);
            if (rng.Chance(0.17f)) {
                shot.comment = rng.Chance(0.5f) ? kind.english : kind.japanese;
            }
            if (DayOf(shot.when) + std::chrono::days(3) <= DayOf(today_) && rng.Chance(0.11f)) {
                shot.estimations = Estimations(shot.when, rated++);
            }
            ++index;
        }
    }

    // The mark-up of ratings, the newest first; each like after the first counts half of the one before.
    static std::string Estimations(const Stamp& taken, int style) {
        auto on = [&](int days) {
            const Stamp day = StampOf(DayOf(taken) + std::chrono::days(days));
            return Format("%04d/%02d/%02d", day.year, day.month, day.day);
        };
        const std::string second = on(2);
        const std::string first = on(1);
        const char* one = "<log date='%s' value='%d'/>";
        std::string text = "\n<estimations>";
        switch (style % 6) {
            case 0:
            case 3:
                text += "<estimation type='like' value='192' last='64'>" + Format(one, second.c_str(), 192) +
                        Format(one, first.c_str(), 128);
                break;
            case 1:
                text += "<estimation type='like' value='224' last='32'>" + Format(one, on(3).c_str(), 224) +
                        Format(one, second.c_str(), 192) + Format(one, first.c_str(), 128);
                break;
            case 2:
                text += "<estimation type='good' value='128' last='128'>" + Format(one, first.c_str(), 128);
                break;
            case 4:
                text +=
                    "<estimation type='privacy' value='-128' last='128'>" + Format(one, first.c_str(), -128);
                break;
            default:
                text += "<estimation type='good' value='128' last='128'>" + Format(one, second.c_str(), 128) +
                        "</estimation>" + "<estimation type='like' value='128' last='128'>" +
                        Format(one, first.c_str(), 128);
                break;
        }
        return text + "</estimation></estimations>";
    }

    void DrawAndFilm() {
        auto on = [&](int monthsBack, int day, int hour) {
            Stamp stamp = today_;
            const int months = stamp.year * 12 + stamp.month - 1 - monthsBack;
            stamp.year = months / 12;
            stamp.month = months % 12 + 1;
            stamp.day = day;
            stamp.hour = hour;
            stamp.minute = 24;
            return stamp;
        };
        life_.drawings = {{on(0, 6, 16), 1, "Hana, with crayons. That is Momo on the roof."},
                          {on(0, 16, 21), 2, "Plan for the vegetable beds"},
                          {on(1, 8, 20), 0, "How to find the picnic place"},
                          {on(7, 19, 17), 1, "Our house, by Hana"},
                          {on(14, 4, 22), 3, "A year of temperatures on the balcony"}};
        life_.movies = {{on(0, std::min(today_.day, 27), 17), 0}, {on(13, 9, 7), 1}};
    }

    Stamp today_;
    int count_;
    std::uint64_t seed_;
    Rng rng_;
    Life life_;
    std::map<int, std::vector<Painter>> decks_;
};

}  // namespace

const Camera& CameraAt(int index) {
    static constexpr Camera cameras[3] = {
        {"Aokata Optical", "Aokata Field 3", "Field 3 Ver. 1.20", false},
        {"LUMENFELD", "Lumenfeld Wanderer II", "Wanderer II 2.01", true},
        {"Kestrel Imaging Co.,Ltd.", "Kestrel Pocket 8", "Version 1.0", false},
    };
    return cameras[index];
}

Life PlanLife(const Stamp& today, int count, std::uint64_t seed) {
    return Planner(today, count, seed).Plan();
}

}  // namespace sample
