-- SPDX-License-Identifier: MIT
-- Ten queries for a database written by `vesk export -o plant.sqlite`. A test runs them as they
-- are; each comment names its parameters.

-- What is within a metre of a point? The tree finds candidates by 32-bit boxes, and the
-- exact columns decide. :x :y :z
SELECT e.* FROM boxes b JOIN element_list e ON e.id = b.id
WHERE b.min_x <= :x + 1000 AND b.max_x >= :x - 1000
  AND b.min_y <= :y + 1000 AND b.max_y >= :y - 1000
  AND b.min_z <= :z + 1000 AND b.max_z >= :z - 1000
  AND (max(e.min_x - :x, :x - e.max_x, 0) * max(e.min_x - :x, :x - e.max_x, 0) +
       max(e.min_y - :y, :y - e.max_y, 0) * max(e.min_y - :y, :y - e.max_y, 0) +
       max(e.min_z - :z, :z - e.max_z, 0) * max(e.min_z - :z, :z - e.max_z, 0)) <= 1e6
ORDER BY e.id;

-- How many metres of pipe does each line have?
SELECT f1, f2, sum(length) / 1000 AS metres FROM element_list
WHERE kind IN ('cylinder', 'torus') GROUP BY f1, f2 ORDER BY f1, f2;

-- Which boxes are the largest?
SELECT f1, f2, counter, line, volume / 1e9 AS m3 FROM element_list
WHERE kind = 'box' ORDER BY volume DESC, id LIMIT 10;

-- How many metres are there of each diameter?
SELECT v.x AS diameter, sum(e.length) / 1000 AS metres
FROM elements e JOIN value_list v ON v.element = e.id AND v.name = 'diameter'
WHERE e.kind = 'cylinder' GROUP BY v.x ORDER BY v.x;

-- How many elements are there of each kind, and with what volume?
SELECT kind, count(*) AS elements, sum(volume) / 1e9 AS m3 FROM elements
GROUP BY kind ORDER BY kind;

-- What box does each line lie in?
SELECT f1, f2, min(min_x), min(min_y), min(min_z), max(max_x), max(max_y), max(max_z)
FROM element_list GROUP BY f1, f2 ORDER BY f1, f2;

-- What lies below a level? :z
SELECT id, file, line, kind FROM element_list WHERE max_z < :z ORDER BY id;

-- What texts are there, and where?
SELECT e.f1, e.f2, t.text, p.x, p.y, p.z
FROM element_list e
JOIN value_list t ON t.element = e.id AND t.name = 'text'
JOIN value_list p ON p.element = e.id AND p.name = 'position'
ORDER BY e.id;

-- What is known about the component that an element belongs to? :id
SELECT name, value FROM attribute_list WHERE element = :id ORDER BY name;

-- What could not be read, or has no shape?
SELECT f.name AS file, x.line, x.message FROM faults x JOIN files f ON f.id = x.file
UNION ALL
SELECT f.name, e.line, e.reason FROM elements e JOIN files f ON f.id = e.file
WHERE e.reason IS NOT NULL ORDER BY 1, 2;
