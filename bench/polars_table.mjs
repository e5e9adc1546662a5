// Optional peer: the table to plain NDJSON, one object of nine members for each row. That is a far smaller output than
// the document, so it shows what reading the table and writing its values as JSON costs at least.
// Usage: node polars_table.mjs INPUT.csv OUT. Polars may use every processor; zentor uses one.
import pl from "nodejs-polars";

const [input, output] = process.argv.slice(2);
const cpuStart = process.cpuUsage();
const start = performance.now();
pl.readCSV(input).writeJSON(output, { format: "lines" });
const wallSeconds = (performance.now() - start) / 1000;
const cpu = process.cpuUsage(cpuStart);
console.log(`wall_seconds ${wallSeconds.toFixed(6)}\ncpu_seconds ${((cpu.user + cpu.system) / 1e6).toFixed(6)}`);
