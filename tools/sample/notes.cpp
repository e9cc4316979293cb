#include "life.h"

namespace sample {

namespace {

// A note of the current month: its day, hour and text. "{when}" stands for the date and time in the
// form of a schedule line.
struct ThisMonth {
    int day;
    int hour;
    int minute;
    const char* text;
    int firstMonth = 1;  // the months of the year that it fits
    int lastMonth = 12;
};

constexpr ThisMonth thisMonth[] = {
    {1, 21, 10,
     "[Diary]\n{when}\nFirst day of the month. Swept the balcony, repotted the rosemary, and found the "
     "screwdriver we have been looking for since spring. It was in the rosemary.\n"},
    {2, 9, 0, "[Schedule]\n{when}\nDentist, Dr. Mori\nBring the insurance card this time\n"},
    {3, 20, 45,
     "[Memo]\nWi-Fi at the cottage: the card is behind the clock.\nThe boiler needs ten minutes. "
     "Patience.\n"},
    {4, 19, 30,
     "[ToDo]\n- light bulb for the stairs (E14, warm)\n- return the library books\n- call grandmother about "
     "the persimmons\n- passport photo for Hana\n"},
    {5, 18, 0, "[予定]\n{when}\nはなのピアノ教室\n楽譜を忘れない\n"},
    {6, 12, 40,
     "[Web]\nhttps://www.example.org/bread/no-knead\nThe slow bread. Twelve hours, no kneading, works every "
     "time.\n"},
    {7, 22, 5,
     "[Diary]\n{when}"
     "\n夕方、ココと川まで歩いた。鴨が十一羽。去年は九羽だったとケンが言う。数えていたのか。\n"},
    {8, 10, 30, "[Schedule]\n{when}\nMarket with Yuki\nbread, soap, the good honey\n"},
    {9, 8, 15,
     "Coffee test, part three: 92 degrees, 15 g, 2:40. Better. Ken says he tastes no difference, but he "
     "finished mine too.\n"},
    {10, 20, 0, "[Memo]\nガスの点検 来週火曜 午前\n立ち会いはケン\n"},
    {11, 13, 20,
     "http://www.example.com/trains/autumn-pass\nThree days, all local trains. Leaves the lake line in.\n"},
    {12, 18, 30, "[Schedule]\n{when}\nDinner with Yuki and Tom, their place\nWe bring the dessert\n"},
    {13, 21, 50,
     "[Diary]\n{when}\nHana lost her second tooth during arithmetic. It is now in a matchbox, with a letter. "
     "She has asked for a bicycle bell.\n"},
    {14, 7, 40, "[ToDo]\n・冬タイヤの予約\n・年賀状の写真をえらぶ\n・モモの予防接種\n・ベランダの球根\n", 10,
     12},
    {15, 11, 0, "[Schedule]\n{when}\nSchool concert, seats from 10:30\nHana: second row, triangle\n"},
    {16, 17, 5,
     "[Mail]\nFrom: Grandmother\n\nThe persimmons are ready. Come with the big basket and with the child. "
     "The ladder is mended. I also found your father's old slides, four boxes, do bring that machine of "
     "yours.\n",
     10, 12},
    {17, 23, 10, "今日の発見：豆腐は一度凍らせると味がしみる。\nおばあちゃんは知っていた。\n"},
    {18, 9, 30,
     "[Memo]\nPaint in the hall: \"Oat 4\", two litres were enough.\nThe rest stands on the top shelf.\n"},
    {19, 19, 0, "[Schedule]\n{when}\nTable tennis, hall B\n"},
    {20, 12, 15, "[Web]\nhttps://www.example.net/stars/tonight\n流星群は夜中の二時から。晴れますように。\n"},
    {21, 18, 30,
     "[Schedule]\n{when}\nDinner at the harbour with Mother and Father\nTable by the window, name of Arai\n"},
    {22, 22, 30,
     "[Diary]\n{when}"
     "\nもみじを見に、お寺まで。人も多かったけれど、裏の小道はだれもいなかった。落ち葉を一枚、この手帳にはさ"
     "む。\n",
     11, 11},
    {23, 10, 0,
     "[ToDo]\n- sort the photos of the lake (only the good ones!)\n- bake the slow bread\n- write to "
     "Sophie\n"},
    {24, 8, 5,
     "Postcard from Zoë and Søren: \"København is grey, the cinnamon buns are not.\" Answer them before the "
     "month is over!\n"},
    {25, 17, 45, "[Schedule]\n{when}\nはな 友だちの誕生日会\nプレゼントは包んである（げた箱の上）\n"},
    {26, 21, 0,
     "[Memo]\nApple cake, grandmother's way: 4 apples, 200 g flour, 120 g butter, 3 eggs. The secret is the "
     "lemon peel. And the second slice.\n"},
    {27, 15, 30,
     "[Mail]\nFrom: Ken\n\nRunning late, train stands in the snow of leaves again. Start without me. Leave "
     "me a corner piece.\n",
     10, 12},
    {28, 20, 20, "[Diary]\n{when}\nFixed the kitchen drawer. It took two screws and eleven months.\n"},
    {14, 7, 40, "[ToDo]\n・自転車のタイヤ\n・写真をえらぶ\n・モモの予防接種\n・ベランダの鉢\n", 1, 9},
    {16, 17, 5,
     "[Mail]\nFrom: Grandmother\n\nThere is more in the garden than I can eat. Come with the big basket and "
     "with the child. I also found your father's old slides, four boxes, do bring that machine of yours.\n",
     1, 9},
    {22, 22, 30, "[Diary]\n{when}\n遠回りして帰った。知らない路地に小さな本屋。はなが一冊、わたしが二冊。\n",
     1, 10},
    {27, 15, 30,
     "[Mail]\nFrom: Ken\n\nRunning late, the train is asleep again. Start without me. Leave me a corner "
     "piece.\n",
     1, 9},
};

// A note of an older day: in the last month of that name before the current one, or so many years before it.
struct Older {
    int month;
    int yearsBefore;
    ThisMonth note;
};

constexpr Older older[] = {
    {10,
     0,
     {10, 21, 15,
      "[Diary]\n{when}\n気球が空いっぱいに。はなは「あれに住みたい」と言った。家賃を調べておく。\n"}},
    {10, 0, {24, 9, 40, "[Memo]\nNew glasses: ready on Thursday. Leave the old ones for spare.\n"}},
    {9,
     0,
     {15, 20, 30,
      "[Diary]\n{when}\nMoon viewing on the hill. Clouds until half past seven, then it stepped out like an "
      "actor.\n"}},
    {8,
     0,
     {12, 22, 40,
      "[Diary]\n{when}\nCamp, second night. We counted shooting stars until nobody could remember the "
      "number.\n"}},
    {7, 0, {24, 20, 10, "[Diary]\n{when}\n海。焼けた。背中が痛い。楽しかった。\n"}},
    {6,
     0,
     {13, 18, 20,
      "Rain, rain. The hydrangeas are the only ones who enjoy it. And the snail on the mailbox.\n"}},
    {5,
     0,
     {4, 21, 0,
      "[Diary]\n{when}\nUp to the lake by the slow train. Seven hours, four lunch boxes, one lost hat.\n"}},
    {4,
     0,
     {3, 19, 20,
      "[Diary]\n{when}\n花見。隣の席のおじさんがはなに笛を教えてくれた。帰り道ずっとピーピー。\n"}},
    {3, 0, {14, 16, 30, "[ToDo]\n- seeds: basil, peas, sunflowers\n- oil the bicycle chain\n"}},
    {2, 0, {14, 20, 0, "[Schedule]\n{when}\nChocolate evening, at ours\n"}},
    {12, 0, {24, 18, 0, "[Schedule]\n{when}\nCake from Kita-ya, pick up before six!\n"}},
    {10,
     1,
     {10, 7, 50, "[Web]\nhttp://www.example.org/balloons/meeting\nStart at sunrise, only without wind.\n"}},
    {7,
     1,
     {24, 21, 30,
      "[Diary]\n{when}\nBeach with the cousins. Uncle Jiro built a castle with running water.\n"}},
    {4, 1, {3, 20, 20, "[Diary]\n{when}\n桜の下でお弁当。カラスに卵焼きをとられた。\n"}},
    {1, 1, {26, 19, 10, "[Memo]\nSnow boots: Hana 19 cm, Ken 27, me 24.\n"}},
    {11, 1, {3, 21, 40, "[Diary]\n{when}\n紅葉の旅。電車の窓がぜんぶ絵だった。\n"}},
    {7,
     2,
     {2, 22, 0,
      "[Diary]\n{when}\nFireworks from the bridge. Hana covered her ears and shouted \"louder\".\n"}},
    {4,
     2,
     {20, 19, 50,
      "[Diary]\n{when}\nHana is four. She blew out the candles before the song, and again after it.\n"}},
};

Note Make(Stamp when, const ThisMonth& source) {
    when.day = source.day;
    when.hour = source.hour;
    when.minute = source.minute;
    when.second = 0;
    std::string text = source.text;
    const std::string mark = "{when}";
    if (const std::size_t at = text.find(mark); at != std::string::npos) {
        text.replace(
            at, mark.size(),
            Format("[%04d/%02d/%02d %02d:%02d]", when.year, when.month, when.day, when.hour, when.minute));
    }
    return {when, text};
}

}  // namespace

std::vector<Note> WriteNotes(const Stamp& today) {
    std::vector<Note> notes;
    for (const ThisMonth& note : thisMonth) {
        if (today.month >= note.firstMonth && today.month <= note.lastMonth) {
            notes.push_back(Make(today, note));
        }
    }
    for (const Older& entry : older) {
        Stamp when = today;
        when.month = entry.month;
        when.year -= entry.yearsBefore + (entry.month >= today.month ? 1 : 0);
        notes.push_back(Make(when, entry.note));
    }
    return notes;
}

}  // namespace sample
