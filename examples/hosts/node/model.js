// SPDX-License-Identifier: MIT
// Writes all eleven elements. VESK is the folder of the library:
//
//     npm ci --ignore-scripts
//     VESK_LIBRARY="$VESK/lib/libCVeskDll.so" node model.js fan
//
// makes veskfan.dat. The module vesk.js refuses what would throw inside the library.
import {VeskFile} from './vesk.js';

function writeModel(file) {
  const number = (n) => file.header('DUCT-7', 'A1', n);  // every element has its own
  number(1);
  file.point([1, 2, 3]);
  number(2);
  file.segment([0, 0, 0], [1000, 0, 0.5]);
  number(3);
  file.triangle([0, 0, 0], [100, 0, 0], [0, 50, 0]);
  number(4);
  file.quadrangle([0, 0, 10], [100, 0, 10], [100, 50, 10], [0, 50, 10]);
  number(5);
  file.text([1, 2, 0], [1, 0, 0], [0, 1, 0], 0.5, 2.5, 7, 1, 'Fan 1');
  number(6);
  file.box([0, 0, 0], [10, 0, 0], [0, 20, 0], [0, 0, 30]);
  number(7);
  file.reducer([0, 0, 0], [10, 0, 0], [0, 10, 0], [10, 10, 0],
               [2, 2, 20], [8, 2, 20], [2, 8, 20], [8, 8, 20]);
  number(8);
  file.cylinder([1, 2, 3], [1, 2, 13], 219.1);
  number(9);
  file.cone([0, 0, 0], [0, 0, 100], 168.3, 114.3);
  number(10);
  file.torus([0, 0, 0], [100, 0, 0], [0, 100, 0], 20);
  number(11);
  file.elbow([0, 0, 0], [0, 0, 10], [50, 0, 0], [0, 50, 0], 30);
}

if (process.argv.length !== 3) {
  console.error('Usage: node model.js NAME');
  process.exit(2);
}
try {
  const file = new VeskFile(process.argv[2]);
  try {
    writeModel(file);
  } finally {
    file.close();
  }
} catch (error) {
  console.error(error.message);
  process.exitCode = 1;
}
