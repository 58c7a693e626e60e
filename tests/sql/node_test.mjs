// The extension in Node, where DuckDB is another build: sums and texts of the file of banks, from two
// queries at a time, and an error with its place.
// usage: node node_test.mjs PACKAGES EXTENSION FOLDER     FOLDER: with bancos.reg and bancos.toml
import assert from 'node:assert/strict';
import { createRequire } from 'node:module';
import { copyFileSync, truncateSync } from 'node:fs';

const [packages, extension, folder] = process.argv.slice(2);
const { DuckDBInstance } = createRequire(`${packages}/`)('@duckdb/node-api');

const instance = await DuckDBInstance.create(':memory:', { allow_unsigned_extensions: 'true' });
const connection = await instance.connect();
await connection.run(`load '${extension}'`);
const rows = async (sql, on = connection) => (await on.runAndReadAll(sql)).getRowsJson();

const table = `'${folder}/bancos.reg'`;
assert.deepEqual(await rows(`select count(*)::integer, sum(_record)::integer from ${table}`),
  [[513, 131841]]);
assert.deepEqual(
  await rows(`select compe, nome_reduzido, inicio_operacao, hora_pix from ${table} where compe = '001'`),
  [['001', 'BCO DO BRASIL S.A.', '2002-04-22', '06:30:00']]);
assert.deepEqual(await rows(`select campotipo_edita('CNPJ', cnpj) from ${table} limit 1`),
  [['00.000.000/0001-91']]);

const others = await Promise.all(Array.from({ length: 4 }, () => instance.connect()));
const sums = await Promise.all(others.map(
  (on) => rows(`select bit_xor(hash(t))::varchar from ${table} t`, on)));
for (const sum of sums) assert.deepEqual(sum, sums[0]);

const broken = `${folder}/broken.reg`;
copyFileSync(`${folder}/bancos.reg`, broken);
truncateSync(broken, 1000);
await assert.rejects(rows(`select sum(length(nome)) from read_campotipo('${broken}', layout := '${folder}/bancos.toml')`),
  /broken\.reg: record 4, byte 864: incomplete record/);
console.log('node: passed');
