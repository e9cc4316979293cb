#!/usr/bin/env python3
"""The same question put to a data base in memory: `search_peer.py TABLE ROUNDS`, TABLE as bench_search prints it.

Prints the median seconds, and how many records and files found. Two words, each in the path or in the comment, and two terms.
"""
import sqlite3, statistics, sys, time

with open(sys.argv[1], encoding="utf-8") as table:
    rows = [line.rstrip("\n").split("\t") for line in table]
base = sqlite3.connect(":memory:")
base.execute("create table record(path text, comment text, iso integer, hour integer)")
base.executemany("insert into record values(?,?,?,?)", rows)
question = ("select path from record where iso >= 100 and iso < 3200 and hour >= 8 and hour < 24"
            " and (path like '%img%' or comment like '%img%') and (path like '%京都%' or comment like '%京都%')")
seconds = []
for _ in range(int(sys.argv[2])):
    start = time.thread_time()
    found = len(base.execute(question).fetchall())
    seconds.append(time.thread_time() - start)
print(f"{statistics.median(seconds):.6f}", len(rows), found)
