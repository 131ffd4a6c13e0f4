// SPDX-License-Identifier: MIT
// judge.js FILE.bcf CLASHES.json
//
// Reads the archive by a reader that is not ours and compares it with what
// `vesk clash --json` says of the same files.
"use strict";
const fs = require("fs");
const { BcfReader } = require("@parametricos/bcf-js/dist/2.1");

function expect(isTrue, what) {
  if (isTrue) return;
  console.log(`failed: ${what}`);
  process.exit(1);
}

async function main(archive, answer) {
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
    expect(topic.creation_date === "2000-01-01T00:00:00Z", `date ${topic.creation_date}`);
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
