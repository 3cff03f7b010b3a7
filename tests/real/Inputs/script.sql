CREATE TABLE town(id INTEGER PRIMARY KEY, name TEXT UNIQUE, people INTEGER, height REAL);
CREATE TABLE road(a INTEGER REFERENCES town(id), b INTEGER REFERENCES town(id), km REAL, CHECK (km > 0));
CREATE INDEX road_a ON road(a, km DESC);
CREATE TABLE log(what TEXT, value);
CREATE TRIGGER grown AFTER UPDATE OF people ON town WHEN new.people > old.people
  BEGIN INSERT INTO log VALUES('grown ' || new.name, new.people - old.people); END;
BEGIN;
WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 200)
  INSERT INTO town SELECT i, 'town' || i, (i * 7919) % 1000, i * 1.25 - 40 FROM n;
INSERT INTO road SELECT x.id, y.id, abs(x.height - y.height) + 0.5
  FROM town x JOIN town y ON y.id = (x.id * 37) % 200 + 1;
COMMIT;
SELECT count(*), sum(people), avg(height), min(name), max(name), total(km) FROM town, road WHERE town.id = road.a;
SELECT t.name, u.name, round(km, 3) FROM road JOIN town t ON t.id = a LEFT JOIN town u ON u.id = b
  WHERE t.people > 900 ORDER BY km DESC, t.name LIMIT 12;
SELECT people / 100 AS c, count(*), group_concat(id, ' ') FROM town GROUP BY c HAVING count(*) > 3 ORDER BY c;
UPDATE town SET people = people + id WHERE id % 50 = 0;
SELECT * FROM log ORDER BY what;
SELECT id, people, rank() OVER (ORDER BY people DESC), sum(people) OVER (ORDER BY id ROWS 3 PRECEDING),
  lag(name, 2, 'none') OVER (PARTITION BY id % 5 ORDER BY id), ntile(4) OVER (ORDER BY height) FROM town WHERE id <= 15;
BEGIN; DELETE FROM town WHERE id > 100; SELECT count(*) FROM town; ROLLBACK; SELECT count(*) FROM town;
SAVEPOINT s; INSERT INTO log VALUES('kept', 1); RELEASE s;
SELECT typeof(value), hex(zeroblob(3)), quote('it''s'), printf('%08.3f|%-5d|%x', 3.14159, 42, 255), substr('abcdef', -3, 2) FROM log LIMIT 1;
SELECT 9223372036854775807, -9223372036854775808, 1e308 * 10, 1.0 / 3, 7 / 2, -7 % 3, 1 << 40, ~5, 0.1 + 0.2;
SELECT date('2024-02-29', '+1 year'), strftime('%j %W', '2024-12-31'), julianday('2000-01-01 12:00');
CREATE VIEW big AS SELECT * FROM town WHERE people > (SELECT avg(people) FROM town);
SELECT count(*) FROM big; EXPLAIN QUERY PLAN SELECT * FROM road WHERE a = 5 ORDER BY km DESC;
SELECT name FROM town WHERE name LIKE 'town1_' OR name GLOB 'town[78]' ORDER BY 1;
INSERT INTO town(id, name) VALUES(1, 'x') ON CONFLICT(id) DO UPDATE SET name = excluded.name || '!';
SELECT name FROM town WHERE id = 1; PRAGMA integrity_check;
INSERT INTO road VALUES(1, 2, -5);
