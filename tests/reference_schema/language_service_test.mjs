// Asks the language service that common editors use for JSON about command files: completions, hover texts, diagnostics.
//
//     node language_service_test.mjs PACKAGES SCHEMA TRANSLATED...
//
// PACKAGES is the folder that install_packages.py has filled, SCHEMA the schema of the command file, TRANSLATED the same in
// a standard draft. What is expected stands in SCHEMA, in the examples, and in the reports of the whole-program cases.

import assert from "node:assert/strict";
import { readFileSync, readdirSync } from "node:fs";
import { createRequire } from "node:module";
import { basename, dirname, join, resolve } from "node:path";
import test from "node:test";
import { fileURLToPath } from "node:url";

const [packages, schemaFile, ...translatedFiles] = process.argv.slice(2);
const root = resolve(dirname(fileURLToPath(import.meta.url)), "../..");
const fromPackages = createRequire(join(resolve(packages), "package.json"));
const { getLanguageService, TextDocument } = fromPackages("vscode-json-languageservice");
const { getNodePath, findNodeAtOffset, parseTree } = fromPackages("jsonc-parser");

const UNUSED = "The value of this item will not be used.";
const SCHEMA_URI = "file:///share/orvante/command_file_schema.json";
const readJson = (file) => JSON.parse(readFileSync(file, "utf8"));
const dialect = readJson(schemaFile);

/** The schema object at a path of names; arrays are passed through. */
function nodeAt(...names) {
    let node = dialect;
    for (const name of names) {
        node = node.properties[name];
        node = node.items ?? node;
    }
    return node;
}

/** An editor in which "json.schemas" names the schema for all files called model.json. */
function editor(translated) {
    const markdown = ["markdown", "plaintext"];
    const textDocument = { hover: { contentFormat: markdown }, completion: { completionItem: { documentationFormat: markdown } } };
    const service = getLanguageService({
        clientCapabilities: { textDocument },
        schemaRequestService: async (uri) => {
            assert.equal(uri, SCHEMA_URI);
            return JSON.stringify(translated);
        },
    });
    service.configure({ validate: true, schemas: [{ uri: SCHEMA_URI, fileMatch: ["model.json"], schema: translated }] });
    return service;
}

function opened(service, text, uri = "file:///model.json") {
    const document = TextDocument.create(uri, "json", 1, text);
    return { document, json: service.parseJSONDocument(document) };
}

/** Opens a text without its mark "|", and tells where that was. */
function openedAtMark(service, marked, uri) {
    const { document, json } = opened(service, marked.replace("|", ""), uri);
    return { document, json, position: document.positionAt(marked.indexOf("|")) };
}

async function completions(service, marked) {
    const { document, json, position } = openedAtMark(service, marked);
    return (await service.doComplete(document, position, json)).items;
}

async function hover(service, marked, uri) {
    const { document, json, position } = openedAtMark(service, marked, uri);
    return (await service.doHover(document, position, json)).contents.join("\n");
}

async function diagnostics(service, text, uri) {
    const { document, json } = opened(service, text, uri);
    const found = await service.doValidation(document, json);
    return found.map((each) => ({ ...each, offset: document.offsetAt(each.range.start) }));
}

const labels = (items) => items.map((item) => item.label).sort();
const boundary = (item) =>
    `{"SETUP": {"ORVAMD": {"ORVAPLANE_2D": [{"HYDRAULICS": {"BOUNDARY": [${item}]}}]}}}`;
const boundaryNode = nodeAt("SETUP", "ORVAMD", "ORVAPLANE_2D", "HYDRAULICS", "BOUNDARY");

/** The member or element that a diagnostic points at, as a report writes it. */
function placeOf(text, offset) {
    const steps = getNodePath(findNodeAtOffset(parseTree(text), offset));
    return "/" + steps.map((step) => String(step).replace(/~/g, "~0").replace(/\//g, "~1")).join("/");
}

/** The places of the warnings in a report, without those within what is unused itself or should be an array. */
function warnedPlaces(report) {
    const placesOf = (line) => [...report.matchAll(line)].map((match) => match[1]);
    const warned = placesOf(/^(\/.*): Warning: /gm);
    const whole = [...warned, ...placesOf(/^(\/.*): Error: This value must be an array\.$/gm)];
    return warned.filter((place) => !whole.includes(place.slice(0, place.lastIndexOf("/"))));
}

for (const file of translatedFiles) {
    const service = editor(readJson(file));
    const named = (name, run) => test(`${basename(file)}: ${name}`, run);

    named("the values of a selector are proposed with what they require", async () => {
        for (const item of ['{"type": |}', '{"name": "outlet", "type": "|"}', '{"type": "we|ir"}']) {
            const items = await completions(service, boundary(item));
            assert.deepEqual(labels(items), boundaryNode.properties.type.enum.map((word) => `"${word}"`).sort());
            const inlet = items.find((each) => each.label === '"uniform_in"');
            assert.match(inlet.documentation.value, /Requires `file`, `slope`\./);
        }
    });

    named("the keys of a block are proposed, but for those that it has", async () => {
        const keys = Object.keys(boundaryNode.properties);
        assert.deepEqual(labels(await completions(service, boundary("{|}"))), [...keys].sort());
        const others = keys.filter((key) => key !== "type");
        assert.deepEqual(labels(await completions(service, boundary('{"type": "wse", |}'))), others.sort());
    });

    named("the two kinds of model are proposed", async () => {
        assert.deepEqual(labels(await completions(service, '{"SETUP": {|}}')), ["ORVAHPC", "ORVAMD", "simulation_name"]);
    });

    named("a proposed key brings its default", async () => {
        const items = await completions(service, boundary("{|}"));
        const value = boundaryNode.properties.max_interval.default;
        assert.equal(items.find((each) => each.label === "max_interval").insertText, `"max_interval": \${1:${value}}`);
    });

    named("hover tells description, unit, range and default of a key", async () => {
        const text = await hover(service, boundary('{"max_|interval": 1}'));
        assert.match(text, /^Half width of the bracket in which `uniform_in` seeks the level/);
        assert.match(text, /\*\*Unit\*\*: \\\[m\\\]/);
        assert.match(text, /\*\*Range\*\*: \\> 0/);
        assert.match(text, /\*\*Default\*\*: `0\.5`/);
    });

    named("hover over a value of a selector tells what it means", async () => {
        const text = await hover(service, boundary('{"type": "weir_|out"}'));
        assert.match(text, /`weir_out`: weir with a crest that may move\./);
        assert.match(text, /May use `my`\./);
    });

    named("hover over a block with variants tells what the block is", async () => {
        const path = ["SETUP", "ORVAHPC", "ORVAPLANE_2D", "HYDRAULICS", "INITIAL"];
        assert.ok(nodeAt(...path).oneOf.length > 1);
        const marked = '{"SETUP": {"ORVAHPC": {"ORVAPLANE_2D": {"HYDRAULICS": {"INIT|IAL": {"type": "dry"}}}}}}';
        const begin = nodeAt(...path).description.replace(/^<p>/, "").slice(0, 20);
        assert.equal((await hover(service, marked)).slice(0, 20), begin);
    });

    named("the examples have no squiggles", async () => {
        const models = readdirSync(join(root, "examples")).filter((name) => !name.includes("."));
        assert.ok(models.length >= 10);
        for (const name of models) {
            const text = readFileSync(join(root, "examples", name, "model.json"), "utf8");
            assert.deepEqual(await diagnostics(service, text), [], name);
        }
    });

    named("a fault has its squiggle where it is", async () => {
        const item = '{"name": "a", "string_name": "b", "type": "weir_out", "my": 2, "slop": 1}';
        const text = boundary(item);
        const found = await diagnostics(service, text);
        const at = (place) => found.filter((each) => placeOf(text, each.offset) === place).map((each) => each.message);
        const where = "/SETUP/ORVAMD/ORVAPLANE_2D/0/HYDRAULICS/BOUNDARY/0";
        assert.deepEqual(at(where), ['Missing property "file".']);
        assert.deepEqual(at(`${where}/my`), ["Value is above the maximum of 1."]);
        assert.deepEqual(at(`${where}/slop`), [UNUSED]);
    });

    named("a value and its file together, and none of them, have a squiggle", async () => {
        const inlet = (more) =>
            '{"SETUP": {"ORVAHPC": {"ORVAPLANE_2D": {"HYDRAULICS": {"BOUNDARY": {"STANDARD": [{"name": "a", ' +
            `"string_name": "b", "type": "uniform_in", "slope": 0.1${more}}]}}}}}}`;
        const messages = async (more) => {
            const text = inlet(more);
            const found = await diagnostics(service, text);
            return found.filter((each) => each.offset > text.indexOf("STANDARD")).map((each) => each.message);
        };
        assert.deepEqual(await messages(', "discharge": 1'), []);
        assert.deepEqual(await messages(""), ['Missing property "discharge".']);
        const both = await messages(', "discharge": 1, "discharge_file": "q.txt"');
        assert.deepEqual(both, ["Matches multiple schemas when only one must validate."]);
    });

    named("models with mistakes have squiggles, and the same warnings as in the report", async () => {
        const cases = readdirSync(join(root, "tests/cases")).filter((name) => name.startsWith("faulty_"));
        let warnings = 0;
        for (const name of cases) {
            const text = readFileSync(join(root, "tests/cases", name, "model.json"), "utf8");
            const report = readFileSync(join(root, "tests/cases", name, "stdout"), "utf8");
            const found = await diagnostics(service, text);
            assert.ok(found.some((each) => each.message !== UNUSED), `${name}: no errors`);
            const places = found.filter((each) => each.message === UNUSED).map((each) => placeOf(text, each.offset));
            assert.deepEqual(places.sort(), warnedPlaces(report).sort(), name);
            warnings += places.length;
        }
        assert.ok(cases.length >= 10 && warnings >= 10);
    });

    named("a command file can name its schema itself", async () => {
        const marked = `{"$schema": "${SCHEMA_URI}", "SETUP": {"simulation_|name": 1, "ORVAMD": {}}}`;
        const elsewhere = "file:///elsewhere/other.json";
        assert.match(await hover(service, marked, elsewhere), /^Name of the simulation/);
        const found = await diagnostics(service, marked.replace("|", ""), elsewhere);
        assert.deepEqual(found.map((each) => each.message), ['Incorrect type. Expected "string".']);
    });
}
