// Optional peers: a table read into memory, typed, as their users read it. Usage: node read_table.mjs PEER INPUT.csv
// PEER: duckdb or polars, with one thread; duckdb-all or polars-all, with all.
const [peer, input] = process.argv.slice(2);
const isAll = peer.endsWith("-all");
if (!isAll) process.env.POLARS_MAX_THREADS = "1";

async function readWithDuckDb() {
    const { DuckDBInstance } = await import("@duckdb/node-api");
    const connection = await (await DuckDBInstance.create(":memory:")).connect();
    if (!isAll) await connection.run("SET threads = 1");
    return async () => {
        await connection.run(`CREATE TABLE cells AS SELECT * FROM read_csv('${input}', sample_size = -1)`);
        return Number((await connection.runAndReadAll("SELECT count(*) FROM cells")).getRows()[0][0]);
    };
}

async function readWithPolars() {
    const pl = (await import("nodejs-polars")).default;
    return async () => pl.readCSV(input).height;
}

const read = await (peer.startsWith("duckdb") ? readWithDuckDb() : readWithPolars());
const cpuStart = process.cpuUsage();
const start = performance.now();
const rows = await read();
const wallSeconds = (performance.now() - start) / 1000;
const cpu = process.cpuUsage(cpuStart);
console.log(`rows ${rows}\nwall_seconds ${wallSeconds.toFixed(6)}`);
console.log(`cpu_seconds ${((cpu.user + cpu.system) / 1e6).toFixed(6)}`);
