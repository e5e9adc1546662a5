// Optional peer: the same document made by SQL. Usage: node duckdb_table.mjs INPUT.csv OUT
//
// COPY ends each of its rows with a line break, so the document comes out with a line for each cell: the same JSON, and
// the same bytes once the line breaks are taken out. A document or a column as one string would have none, but would
// have to fit into memory. DuckDB may use every processor; zentor uses one.
import { DuckDBInstance } from "@duckdb/node-api";

const [input, output] = process.argv.slice(2);
const literal = (text) => `'${text.replaceAll("'", "''")}'`;

const macros = `
CREATE MACRO names(objectType, counter, displayName) AS
    '{"objectType":"' || objectType || '","matchName":"data' || counter || '","displayName":' || displayName;
CREATE MACRO limits(n) AS '{"min":' || n || ',"max":' || n || '}';
CREATE MACRO numberCell(n) AS
    ',"dataType":{"type":"number","numberStringProperties":{"pattern":{"isSigned":' ||
    if(starts_with(n, '-'), 'true', 'false') || ',"digitsDecimal":' ||
    if(contains(n, '.'), length(n) - position('.' IN n), 0) || ',"digitsInteger":' ||
    length(ltrim(split_part(n, '.', 1), '-')) || '},"range":{"occurring":' || limits(n) || ',"legal":' || limits(n) ||
    '}}},"value":' || n || '}';
CREATE MACRO textCell(t) AS
    ',"dataType":{"type":"string","paddedStringProperties":{"maxDigitsInStrLength":0,"maxLen":0,' ||
    '"eventMarkerB":false}},"value":' || to_json(t)::VARCHAR || '}';`;

const connection = await (await DuckDBInstance.create(":memory:")).connect();
const cpuStart = process.cpuUsage();
const start = performance.now();
await connection.run(macros);
await connection.run(`CREATE TABLE cells AS SELECT row_number() OVER () - 1 AS row_index, *
    FROM read_csv(${literal(input)}, header = true, delim = ',', sample_size = -1)`);
const rowsOf = async (query) => (await connection.runAndReadAll(query)).getRows();
const columns = await rowsOf("SELECT column_name, column_type FROM (DESCRIBE cells) OFFSET 1");
const rowCount = Number((await rowsOf("SELECT count(*) FROM cells"))[0][0]);

// UNION ALL and COPY keep the order of the rows, so nothing has to be sorted.
const parts = [`SELECT '{"version":"vkjson2.0.0","dynamicSamplesPresentB":false,' ||
    '"creator":"com.orvane.sensor.csv","dataOutline":['`];
columns.forEach(([name, type], index) => {
    const counter = index * (rowCount + 1);
    const source = `"${name.replaceAll('"', '""')}"`;
    const displayName = JSON.stringify(name);
    const cellNames = `if(row_index > 0, ',', '') || names('dataStatic', ${counter + 1} + row_index,
        ${literal(displayName.slice(0, -1) + " ")} || row_index || '"')`;
    parts.push(`SELECT '${index > 0 ? "," : ""}' ||
        names('dataGroup', ${counter}, ${literal(displayName)}) || ',"children":['`);
    parts.push(type === "VARCHAR"
        ? `SELECT ${cellNames} || textCell(coalesce(${source}, '')) FROM cells`
        : `SELECT ${cellNames} || numberCell(n)
           FROM (SELECT row_index, format('{:.16g}', coalesce(${source}, 0)::DOUBLE) AS n FROM cells)`);
    parts.push("SELECT ']}'");
});
parts.push("SELECT ']}'");
await connection.run(`COPY (${parts.join("\nUNION ALL\n")}) TO ${literal(output)}
    (FORMAT csv, HEADER false, QUOTE '', ESCAPE '', DELIMITER '\t')`);
const wallSeconds = (performance.now() - start) / 1000;
const cpu = process.cpuUsage(cpuStart);
console.log(`wall_seconds ${wallSeconds.toFixed(6)}\ncpu_seconds ${((cpu.user + cpu.system) / 1e6).toFixed(6)}`);
