// The navigation log: what the user looked at and heard, in a hidden text file in the folder of today.
//
//   <root>/2008/200811/2008_1113/KM20081113.log
//   [2008/11/13 10:15:00]<tab>(Month)<tab>2008/11          one line an event
//
// In code page 932 with LF line ends. A text which that code page cannot hold turns the whole file into UTF-8
// with a byte-order mark, and later lines follow suit.
#pragma once

namespace kalmora {

// printf-like; UTF-8; a line feed at the end of the format is dropped, since every line gets one. Does
// nothing while the setting OutputNavigationLog is off. Makes the folder of today when it is missing, also on
// a day that has nothing else. While the data folder itself is not there, nothing is made: the last thousand
// lines wait in memory, and the first line after its return takes them along, each to the day of its event.
//
// False when the log is off or the folder cannot be had. True otherwise, also without a format and when the
// file could not be written: no caller depends on the log. Any thread; writes to the disk before it returns.
[[gnu::format(printf, 1, 2)]] bool NavigationLog(const char* format, ...);

}  // namespace kalmora
