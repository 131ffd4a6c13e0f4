// SPDX-License-Identifier: MIT
// judge.js FILE.bcf CLASHES.json PLANT.ifc
//
// Reads the archive by a reader that is not ours and compares it with what
// `vesk clash --json` says of the same files, and the elements that it selects with
// the products of the export to IFC.
"use strict";
const fs = require("fs");
const { execFileSync } = require("child_process");
const { BcfReader } = require("@parametricos/bcf-js/dist/2.1");

function expect(isTrue, what) {
  if (isTrue) return;
  console.log(`failed: ${what}`);
  process.exit(1);
}

// The reader skips what a view selects.
function selectedIn(archive, guid) {
  const view = execFileSync("unzip", ["-p", archive, `${guid}/viewpoint.bcfv`], {
    encoding: "utf8",
  });
  return [...view.matchAll(/<Component IfcGuid="([^"]*)"/g)].map((match) => match[1]);
}

// What an IFC file says of each product, by its GlobalId.
function productsOf(plant) {
  const lines = fs.readFileSync(plant, "latin1").split("\n");
  return new Map(lines.map((line) => [/^#\d+=\s*IFC\w+\('([^']{22})'/.exec(line)?.[1], line]));
}

async function main(archive, answer, plant) {
  const products = productsOf(plant);
  const bytes = fs.readFileSync(archive);
  const reader = new BcfReader();
  await reader.read(bytes.buffer.slice(bytes.byteOffset, bytes.byteOffset + bytes.length));
  const clashes = JSON.parse(fs.readFileSync(answer, "utf8")).clashes;
  expect(reader.version === "2.1", `version ${reader.version}`);
  expect(reader.markups.length === clashes.length, `${reader.markups.length} topics`);
  const guids = new Set(reader.markups.map((each) => each.topic.guid));
  expect(guids.size === clashes.length, "identifiers that are not unique");
  reader.markups.forEach((markup, i) => {
    const clash = clashes[i];
    const topic = markup.topic;
    expect(topic.labels[0] === clash.code, `${topic.guid}: label ${topic.labels}`);
    expect(topic.title.includes(clash.a.header), `${topic.guid}: title ${topic.title}`);
    const place = `${clash.a.file}:${clash.a.line}: `;
    expect(topic.description === place + topic.title, `${topic.guid}: ${topic.description}`);
    expect(topic.creation_date === "2000-01-01T00:00:00Z", `date ${topic.creation_date}`);
    const selected = selectedIn(archive, topic.guid);
    expect(selected.length === 2 && selected[0] !== selected[1], `${topic.guid}: ${selected}`);
    [clash.a, clash.b].forEach((element, k) => {
      const product = products.get(selected[k]) ?? "";
      expect(product.includes(`'${element.kind}:${element.line}'`), `${topic.guid}: ${product}`);
      const isPlain = /^[\x20-\x7e]*$/.test(element.header);
      expect(!isPlain || product.includes(`'${element.header} `), `${topic.guid}: ${product}`);
    });
    const camera = markup.viewpoints[0].perspective_camera;
    const from = camera.camera_view_point;
    const along = camera.camera_direction;
    // Four metres along the view lies the place, in metres.
    ["x", "y", "z"].forEach((axis, k) => {
      const at = from[axis] + 4 * along[axis];
      expect(Math.abs(at - clash.place[k] / 1000) < 1e-6, `${topic.guid}: view ${axis} ${at}`);
    });
  });
  console.log(`${clashes.length} topics`);
}

main(...process.argv.slice(2)).catch((error) => expect(false, error.message));
