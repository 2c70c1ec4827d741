// Judges statements by an independent T-SQL grammar: node check.js FILE, where FILE is a JSON array of texts. Prints one
// line for every text that the grammar does not take, as JSON: its place in the array, where, and why. Exit code 0 when
// all were taken, 1 when some were not.
//
// The grammar takes every text of this product as it stands, so there is no list of exceptions here. Two things are
// stricter than the grammar. A batch may begin with the name of a procedure without EXEC, which makes any misspelt
// keyword a call: that is refused. And a text handed to EXEC (N'...') is a literal to the grammar: it is judged too.
//
// A judge that lets everything pass would go unnoticed, so it has to refuse some broken statements first; if it takes one
// of them, the exit code is 2.
'use strict';
const fs = require('fs');
const path = require('path');
const { createRequire } = require('module');

// The packages stand in the folder that they were installed in, which is not this one.
const load = createRequire(path.join(process.env.TOLVAN_GRAMMAR_FOLDER, 'package.json'));
const { antlr4tsSQL, SQLDialect } = load('antlr4ts-sql');

function callsWithoutExec(node) {
  if (node.constructor.name === 'Execute_body_batchContext') return true;
  return (node.children || []).some(callsWithoutExec);
}

function judge(text) {
  const faults = [];
  const listener = {
    syntaxError: (recognizer, symbol, line, column, message) =>
      faults.push(`${line}:${column} ${message.slice(0, 80)}`),
  };
  const grammar = new antlr4tsSQL(SQLDialect.TSQL);
  const parser = grammar.getParser(grammar.getTokens(text, [listener]), [listener]);
  const tree = grammar.getParseTree(parser);
  if (callsWithoutExec(tree)) faults.push('a call of a procedure without EXEC');
  for (const [, inner] of text.matchAll(/\bEXEC\s*\(\s*N?'((?:[^']|'')*)'\s*\)/gi)) {
    faults.push(...judge(inner.replaceAll("''", "'")));
  }
  return faults;
}

const broken = [
  'SELECT Sum(Ventas.GranTotal AS Suma From Ventas',
  'SELECT idItem, FROM Items',
  'SELECT idItem FROM Items LIMIT 1',
  'SELECT idItem FRM Items',
  'SELEC 1',
  'UPDATE Precios SET Precio=1 WHERE',
  "INSERT INTO Clientes ( idCliente ) VALUES ('1') ON CONFLICT (idCliente) DO NOTHING",
  "IF NOT EXISTS (SELECT * FROM Clientes WHERE idCliente = '1' INSERT INTO Clientes ( idCliente ) VALUES ('1')",
  "SELECT idItem FROM Items WHERE idItem = 'D'OLEO'",
  "IF OBJECT_ID(N'V', N'V') IS NULL EXEC (N'CREATE VIEW V AS SELECT 1 FROM')",
  'CREATE TABLE T (a INTEGER, PRIMARY KEY)',
  'GRANT INSERT (a ON T TO tolvan_impexp',
];
for (const text of broken) {
  if (judge(text).length > 0) continue;
  console.log(JSON.stringify({ faults: ['the judge takes a broken statement'], text }));
  process.exit(2);
}

const texts = JSON.parse(fs.readFileSync(process.argv[2], 'utf8'));
let refused = 0;
texts.forEach((text, index) => {
  const faults = judge(text);
  if (faults.length === 0) return;
  refused += 1;
  console.log(JSON.stringify({ index, faults, text }));
});
process.exitCode = refused === 0 ? 0 : 1;
