// Reads AC1015 files with three independent readers and says what each of them found:
//   node read_with_others.mjs PACKAGES FILE...
// PACKAGES is the folder in which the readers' packages are installed. Prints one line of JSON for each file; ends with
// 1 if a reader found a fault in one of them.
import { readFileSync } from "node:fs";
import path from "node:path";
import { pathToFileURL } from "node:url";

const [packages, ...files] = process.argv.slice(2);
const modules = path.resolve(packages, "node_modules");
const load = (name) => import(pathToFileURL(path.join(modules, name)));

// What the first reader says of every file, those of the host among them: a value is out of the bounds that it expects.
const harmlessBits = 64;
// What the third reader says of the list of viewports, that of the host among them: entries without names.
const harmlessNote = /^Could not read 71 /;

const count = (names) => {
  const counts = {};
  for (const name of names) counts[name] = (counts[name] ?? 0) + 1;
  return counts;
};

// The readers chat on the console, which is this program's answer.
const silently = async (work) => {
  const spoken = ["log", "warn", "error", "info", "debug"].map((name) => [name, console[name]]);
  for (const [name] of spoken) console[name] = () => {};
  try {
    return await work();
  } finally {
    for (const [name, speak] of spoken) console[name] = speak;
  }
};

async function firstReader() {
  const { default: createModule } = await load("@mlightcad/libredwg-web/wasm/libredwg-web.js");
  const { Dwg_File_Type, LibreDwg } = await load("@mlightcad/libredwg-web/dist/libredwg-web.js");
  const raw = await createModule();
  const wrapped = await LibreDwg.create(path.join(modules, "@mlightcad/libredwg-web/wasm/"));
  return (bytes) => {
    raw.FS.writeFile("drawing.dwg", bytes);
    const { error } = raw.dwg_read_file("drawing.dwg");
    raw.FS.unlink("drawing.dwg");
    const data = wrapped.dwg_read_data(bytes, Dwg_File_Type.DWG);
    const database = wrapped.convert(data);
    wrapped.dwg_free(data);
    const images = database.entities
      .filter((entity) => entity.type === "IMAGE")
      .map((image) => ({ size: image.imageSize, u: image.uPixel, v: image.vPixel, position: image.position }));
    const definitions = (database.objects?.IMAGEDEF ?? []).map((each) => ({ path: each.fileName, size: each.size }));
    return {
      faults: (error & ~harmlessBits) !== 0 ? [`error bits ${error}`] : [],
      entities: count(database.entities.map((entity) => entity.type)),
      images,
      definitions,
    };
  };
}

async function secondReader() {
  const { default: create } = await load("@mlightcad/libdxfrw-web/dist/libdxfrw.js");
  const library = await create();
  return (bytes) => {
    const database = new library.DRW_Database();
    const handler = new library.DRW_FileHandler();
    handler.database = database;
    const exact = bytes.buffer.slice(bytes.byteOffset, bytes.byteOffset + bytes.byteLength);
    const reader = new library.DRW_DwgR(exact);
    const understood = reader.read(handler, false);
    const list = database.mBlock.entities;
    const kinds = [];
    for (let i = 0; i < list.size(); ++i) kinds.push(list.get(i).eType.value ?? String(list.get(i).eType));
    return { faults: understood ? [] : ["not understood"], entities: kinds.length };
  };
}

async function thirdReader() {
  const { DwgReader } = await load("@node-projects/acad-ts/dist/index.js");
  return (bytes) => {
    const notes = [];
    const exact = bytes.buffer.slice(bytes.byteOffset, bytes.byteOffset + bytes.byteLength);
    const document = new DwgReader(new Uint8Array(exact), (_, note) => notes.push(note)).read();
    const errors = notes.filter((note) => (note.notificationType === 3 || note.exception) && !harmlessNote.test(note.message));
    return {
      faults: errors.map((note) => note.message),
      entities: count([...document.entities].map((entity) => entity.objectName)),
    };
  };
}

const readers = await silently(async () => ({
  libredwg: await firstReader(),
  libdxfrw: await secondReader(),
  acadts: await thirdReader(),
}));
let faulty = false;
for (const file of files) {
  const bytes = readFileSync(file);
  const found = { file: path.basename(file) };
  for (const [name, read] of Object.entries(readers)) {
    try {
      found[name] = await silently(() => read(bytes));
    } catch (error) {
      found[name] = { faults: [String(error)] };
    }
    faulty ||= found[name].faults.length > 0;
  }
  console.log(JSON.stringify(found));
}
process.exit(faulty ? 1 : 0);
