#!/usr/bin/env python3
"""Makes the backup files beside it: one as this program writes them, the others as somebody else might.

Run again, it makes files of the same contents; those with a journal or a log differ in their salts.
"""

import pathlib
import shutil
import sqlite3
import tempfile

here = pathlib.Path(__file__).resolve().parent
TABLE = "CREATE TABLE users (id INTEGER NOT NULL,value1 TEXT, value2 TEXT, value3 TEXT)"
ROWS = [(1008, "2", "", ""), (1400, "0", "Größe", ""), (250, "/Applications/Mail.app", "1", "0")]
JOURNAL_MARK = bytes.fromhex("d9d505f920a163d7")


def connect(path):
    database = sqlite3.connect(path, isolation_level=None)
    database.execute("PRAGMA page_size=512")
    return database


def make(name, *statements, rows=()):
    path = here / f"{name}.sqlite"
    path.unlink(missing_ok=True)
    database = connect(path)
    for statement in statements:
        database.execute(statement)
    for row in rows:
        marks = ",".join("?" * len(row))
        database.execute(f"INSERT INTO users VALUES({marks})", row)
    database.close()
    return path


def columns(count):
    return ", ".join(f"c{number}" for number in range(count))


def copy_open(source, name):
    """The files as a killed writer leaves them."""
    for file in source.parent.iterdir():
        if not file.name.endswith("-shm"):
            shutil.copy(file, here / file.name.replace(source.name, f"{name}.sqlite"))


def endless(name):
    """A table whose few pages name each other so often that it seems to have billions of rows."""
    size, levels = 512, 5
    leaf = make(name, TABLE, rows=ROWS[:1]).read_bytes()
    count = (size - 12) // 7
    cell = size - 5 * count
    pages = [leaf[:size]]
    for level in range(levels):
        child = (len(pages) + 2).to_bytes(4, "big")
        head = b"\x05\0\0" + count.to_bytes(2, "big") + cell.to_bytes(2, "big") + b"\0" + child
        pointers = b"".join((cell + 5 * n).to_bytes(2, "big") for n in range(count))
        cells = (child + b"\x01") * count
        pages.append((head + pointers).ljust(cell, b"\0") + cells)
    pages.append(leaf[size:])
    first = bytearray(pages[0])
    first[28:32] = len(pages).to_bytes(4, "big")
    (here / f"{name}.sqlite").write_bytes(bytes(first) + b"".join(pages[1:]))


def unfinished(name):
    """A save that was killed while it wrote into the file itself."""
    with tempfile.TemporaryDirectory() as folder:
        path = pathlib.Path(folder) / "open.sqlite"
        database = connect(path)
        database.execute("PRAGMA cache_size=1")
        database.execute(TABLE)
        for row in ROWS:
            database.execute("INSERT INTO users VALUES(?,?,?,?)", row)
        database.execute("BEGIN")
        database.execute("UPDATE users SET value2='half'")
        for number in range(40):
            database.execute("INSERT INTO users VALUES(1004,?,?,'')", (number, "x" * 400))
        copy_open(path, name)
        database.execute("ROLLBACK")
        database.close()


def logged(name):
    """A database whose last row stands only in its write-ahead log."""
    with tempfile.TemporaryDirectory() as folder:
        path = pathlib.Path(folder) / "open.sqlite"
        database = connect(path)
        database.execute("PRAGMA journal_mode=WAL")
        database.execute("PRAGMA wal_autocheckpoint=0")
        database.execute(TABLE)
        database.executemany("INSERT INTO users VALUES(?,?,?,?)", ROWS[:2])
        database.execute("PRAGMA wal_checkpoint(TRUNCATE)")
        database.execute("INSERT INTO users VALUES(?,?,?,?)", ROWS[2])
        copy_open(path, name)
        database.close()


def main():
    plain = make("plain", TABLE, rows=ROWS)
    make("other-case", TABLE.replace("users", "USERS"), rows=ROWS)
    make("sixteen-columns", f"CREATE TABLE users ({columns(16)})", rows=[tuple(range(1000, 1016))])
    make("three-columns", "CREATE TABLE users (id INTEGER, value1 TEXT, value2 TEXT)",
         rows=[(1008, "2", "")])
    make("no-table", "CREATE TABLE people (id INTEGER)")
    make("text-id", TABLE, rows=[("1009x", "1", "", ""), (" 1010", "1", "", ""), ("x", "1", "", "")])
    make("odd-types", f"CREATE TABLE users ({columns(4)})",
         rows=[(1008.9, 2.7, None, None), (None, None, None, None), (b"1004", b"48", b"\x01\x02", 5),
               (2 ** 40, -(2 ** 40), 1e300, ""), (-250, "x", "1", "0")])
    make("nul", TABLE, rows=[(1400, "0", "a\0b", "")])
    make("not-utf8", TABLE, "INSERT INTO users VALUES(1400,'0',CAST(x'61ff62c3' AS TEXT),'')")
    make("generated", "CREATE TABLE users (id INTEGER, value1 TEXT GENERATED ALWAYS AS (id || 'x'),"
         " value2 TEXT, value3 TEXT)", "INSERT INTO users(id, value2, value3) VALUES(1008,'','')")
    make("generated-by-function", "CREATE TABLE users (id INTEGER, value1 TEXT GENERATED ALWAYS AS"
         " (printf('%900000d', id)), value2 TEXT, value3 TEXT)",
         "INSERT INTO users(id, value2, value3) VALUES(1008,'','')")
    swelling = ", ".join(f"g{n} TEXT GENERATED ALWAYS AS (g{n - 1} || g{n - 1})" for n in range(1, 16))
    make("swelling", f"CREATE TABLE users (id INTEGER, value1 TEXT GENERATED ALWAYS AS (g15), value2"
         f" TEXT GENERATED ALWAYS AS (g15), value3 TEXT, g0 TEXT, {swelling})",
         *["INSERT INTO users(id, value3, g0) VALUES(1008,'','0123456789abcdef')"] * 300)
    doubling = ", ".join(f"g{n} INTEGER GENERATED ALWAYS AS (g{n - 1} + g{n - 1})" for n in range(1, 40))
    make("doubling", f"CREATE TABLE users (id INTEGER, value1 TEXT GENERATED ALWAYS AS (g39), value2"
         f" TEXT, value3 TEXT, g0 INTEGER, {doubling})",
         "INSERT INTO users(id, value2, value3, g0) VALUES(1008,'','',1)")
    make("trigger", TABLE, "CREATE TRIGGER eager AFTER INSERT ON users BEGIN DELETE FROM users; END",
         "CREATE TABLE other (a)")
    make("view", "CREATE TABLE hidden (id, value1, value2, value3)",
         "INSERT INTO hidden VALUES(1008,2,'','')", "CREATE VIEW users AS SELECT * FROM hidden")
    make("endless-view", "CREATE VIEW users AS WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1"
         " FROM n) SELECT i, i AS a, i AS b, i AS c FROM n")
    make("full-text", "CREATE VIRTUAL TABLE users USING fts5(id, value1, value2, value3)",
         rows=[("1008", "2", "", "")])
    make("no-rows", TABLE)

    endless("endless-tree")

    (here / "empty.sqlite").write_bytes(b"")
    (here / "empty.sqlite-journal").write_bytes(JOURNAL_MARK + bytes(504))
    (here / "empty-with-log.sqlite").write_bytes(b"")
    (here / "empty-with-log.sqlite-wal").write_bytes(bytes(64))
    (here / "words.sqlite").write_bytes(b"These are only words.\n" * 40)
    whole = plain.read_bytes()
    (here / "cut.sqlite").write_bytes(whole[:512])
    (here / "header-only.sqlite").write_bytes(whole[:100])

    unfinished("killed-save")
    logged("with-log")
    (here / "log-lost.sqlite").write_bytes((here / "with-log.sqlite").read_bytes())

    # A journal that names another one: rolling it back, the library deletes that file.
    for ending in ("", "-journal"):
        shutil.copy(here / f"killed-save.sqlite{ending}", here / f"names-others.sqlite{ending}")
    other = b"words.sqlite"
    with open(here / "names-others.sqlite-journal", "ab") as journal:
        journal.write((0x40000000 // 512 + 1).to_bytes(4, "big") + other + len(other).to_bytes(4, "big")
                      + (sum(other) & 0xFFFFFFFF).to_bytes(4, "big") + JOURNAL_MARK)


if __name__ == "__main__":
    main()
