#include "life.h"

#include <algorithm>
#include <array>
#include <map>

#include "random.h"

namespace sample {

namespace {

Weather WeatherOf(const Stamp& day, std::uint64_t seed) {
    Random random(seed ^ static_cast<std::uint64_t>(DayOf(day).time_since_epoch().count()) * 7919u);
    const float draw = random.Unit();
    return draw < 0.35f ? Weather::Clear : draw < 0.85f ? Weather::Fair : Weather::Cloudy;
}

class Planner {
public:
    Planner(const std::vector<Scene>& scenes, const std::vector<Occasion>& occasions, const Stamp& today,
            int count, std::uint64_t seed)
        : scenes_(scenes), occasions_(occasions), today_(today), count_(count), seed_(seed), random_(seed) {}

    Life Plan() {
        FillThisMonth();
        FillOlderYears();
        std::stable_sort(life_.shots.begin(), life_.shots.end(),
                         [](const Shot& a, const Shot& b) { return a.when < b.when; });
        NameAndRate();
        DrawAndFilm();
        return std::move(life_);
    }

private:
    void Add(const Stamp& day, const Scene& scene) {
        Shot shot;
        shot.when = day;
        const float hour = random_.Range(scene.from, scene.to);
        shot.when.hour = static_cast<int>(hour);
        shot.when.minute = static_cast<int>((hour - static_cast<float>(shot.when.hour)) * 60.0f);
        shot.when.second = random_.Pick(0, 59);
        shot.scene = &scene;
        shot.weather = WeatherOf(day, seed_);
        shot.seed = random_.Next();
        const float format = random_.Unit();
        if (scene.upright && format < 0.3f) {
            std::swap(shot.width, shot.height);
        } else if (format > 0.95f) {
            shot.height = 1200;
            shot.width = 1200;
        } else if (format > 0.87f) {
            shot.height = 900;
        }
        life_.shots.push_back(shot);
    }

    // Scenes that fit the month, each once before any comes again.
    const Scene& Draw(int month) {
        std::vector<const Scene*>& deck = decks_[month];
        if (deck.empty()) {
            for (const Scene& scene : scenes_) {
                if (scene.months >> month & 1u) deck.push_back(&scene);
            }
            if (deck.empty()) deck.push_back(&scenes_.front());
            for (std::size_t i = deck.size() - 1; i > 0; --i) {
                std::swap(deck[i], deck[static_cast<std::size_t>(random_.Pick(0, static_cast<int>(i)))]);
            }
            // What was shown last does not come first.
            if (deck.size() > 1 && deck.back() == last_) std::swap(deck.front(), deck.back());
        }
        last_ = deck.back();
        deck.pop_back();
        return *last_;
    }

    // A scene of an occasion: one whose name begins so and that fits the month, or any of that name.
    const Scene* Planned(const Occasion& occasion, std::size_t at, int month) {
        if (at >= occasion.scenes.size()) return nullptr;
        std::vector<const Scene*> fitting;
        const Scene* any = nullptr;
        for (const Scene& scene : scenes_) {
            if (!scene.name.starts_with(occasion.scenes[at])) continue;
            any = &scene;
            if (scene.months >> month & 1u || scene.name == occasion.scenes[at]) fitting.push_back(&scene);
        }
        if (fitting.empty()) return any;
        return fitting[static_cast<std::size_t>(random_.Pick(0, static_cast<int>(fitting.size()) - 1))];
    }

    const Occasion* OccasionOn(const Stamp& day) const {
        for (const Occasion& occasion : occasions_) {
            if (occasion.month == day.month && day.day >= occasion.day &&
                day.day < occasion.day + occasion.days &&
                (occasion.years >> std::min(today_.year - day.year, 3) & 1u)) {
                return &occasion;
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
                shots += weekend ? random_.Pick(1, 3) : random_.Chance(0.6f) ? 1 : 0;
                if (day.day == today_.day) shots = std::max(shots, 4);
                spare -= shots - 1;
            }
            const Occasion* occasion = OccasionOn(day);
            for (int i = 0; i < shots; ++i) {
                const Scene* planned =
                    occasion ? Planned(*occasion, static_cast<std::size_t>(i), day.month) : nullptr;
                Add(day, planned ? *planned : Draw(day.month));
            }
        }
    }

    void FillOlderYears() {
        struct Days {
            Stamp first;
            const Occasion* occasion;
        };
        std::vector<Days> all;
        Stamp monthStart = today_;
        monthStart.day = 1;
        const auto end = DayOf(monthStart);
        const auto begin = end - std::chrono::days(3 * 365);
        for (int back = 0; back <= 3; ++back) {
            for (const Occasion& occasion : occasions_) {
                Stamp first = today_;
                first.year -= back;
                first.month = occasion.month;
                first.day = occasion.day;
                if (DayOf(first) >= begin && DayOf(first) < end && (occasion.years >> back & 1u)) {
                    all.push_back({first, &occasion});
                }
            }
        }
        // Round after round each occasion gets one more picture; now and then a plain day has one too.
        for (int round = 0; round < 40; ++round) {
            for (const Days& days : all) {
                if (static_cast<int>(life_.shots.size()) >= count_) return;
                const int last = days.occasion->days - 1;
                const Stamp day = StampOf(DayOf(days.first) +
                                          std::chrono::days(round <= last ? round : random_.Pick(0, last)));
                if (const Scene* scene =
                        Planned(*days.occasion, static_cast<std::size_t>(round), day.month)) {
                    Add(day, *scene);
                    continue;
                }
                if (round > 2 && round < 5) continue;
                const Stamp plain = StampOf(DayOf(day) + std::chrono::days(random_.Pick(3, 9)));
                if (DayOf(plain) < end) Add(plain, Draw(plain.month));
            }
        }
    }

    void NameAndRate() {
        std::array<int, 3> serial = {118, 2041, 12};
        int index = 0;
        int rated = 0;
        for (Shot& shot : life_.shots) {
            Random rng(seed_ * 31 + static_cast<std::uint64_t>(index));
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
            if (rng.Chance(0.17f)) {
                shot.comment = rng.Chance(0.5f) ? shot.scene->english : shot.scene->japanese;
            }
            if (DayOf(shot.when) + std::chrono::days(3) <= DayOf(today_) && rng.Chance(0.11f)) {
                shot.estimations = Estimations(shot.when, rated++);
            }
            ++index;
        }
    }

    // The mark-up of ratings, the newest first; each like after the first counts half of the one before.
    static std::string Estimations(const Stamp& taken, int style) {
        struct Log {
            const char* head;  // opens the estimation; null: one more line of the same
            int daysLater;
            int value;
        };
        static constexpr Log like = {"type='like' value='192' last='64'", 2, 192};
        static constexpr Log good = {"type='good' value='128' last='128'", 1, 128};
        static constexpr Log first = {nullptr, 1, 128};
        static const std::array<std::vector<Log>, 5> styles = {{
            {like, first},
            {{"type='like' value='224' last='32'", 3, 224}, {nullptr, 2, 192}, first},
            {good},
            {{"type='privacy' value='-128' last='128'", 1, -128}},
            {{good.head, 2, 128}, {"type='like' value='128' last='128'", 1, 128}},
        }};
        std::string text = "\n<estimations>";
        bool open = false;
        for (const Log& log : styles[static_cast<std::size_t>(style) % styles.size()]) {
            if (log.head) text += std::string(open ? "</estimation>" : "") + "<estimation " + log.head + ">";
            open = true;
            const Stamp day = StampOf(DayOf(taken) + std::chrono::days(log.daysLater));
            text +=
                Format("<log date='%04d/%02d/%02d' value='%d'/>", day.year, day.month, day.day, log.value);
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
        life_.drawings = {{on(0, 6, 16), "drawing-house", "Hana, with crayons. That is Momo on the roof."},
                          {on(0, 16, 21), "drawing-garden", "Plan for the vegetable beds"},
                          {on(1, 8, 20), "drawing-map", "How to find the picnic place"},
                          {on(7, 19, 17), "drawing-house", "Our house, by Hana"},
                          {on(14, 4, 22), "drawing-chart", "A year of temperatures on the balcony"}};
        life_.movies = {{on(0, std::min(today_.day, 27), 17), "sea-sunset", ""},
                        {on(13, 9, 7), "balloons", ""}};
    }

    const std::vector<Scene>& scenes_;
    const std::vector<Occasion>& occasions_;
    Stamp today_;
    int count_;
    std::uint64_t seed_;
    Random random_;
    Life life_;
    std::map<int, std::vector<const Scene*>> decks_;
    const Scene* last_ = nullptr;
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

Life PlanLife(const std::vector<Scene>& scenes, const std::vector<Occasion>& occasions, const Stamp& today,
              int count, std::uint64_t seed) {
    return Planner(scenes, occasions, today, count, seed).Plan();
}

}  // namespace sample
