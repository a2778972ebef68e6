'use strict';
// Outlines as arrays of numbers: lines, elliptic arcs and cubic Bezier curves, each a record of kStride numbers:
// its kind, start and end, then for an arc centre, half axes, rotation, first angle and turn, for a curve the
// two points that pull it. Everything is in mm with y up.

const kLine = 0, kArc = 1, kCurve = 2;
const kStride = 12;
const kSamples = 32; // pieces of a curve or an ellipse among which the nearest point is looked for first

class Outlines {
  constructor() {
    this.numbers = new Float64Array(kStride * 1024);
    this.count = 0;
  }

  // Appends the elements of path data and returns how many they are. A lone "M" is a point: a line of length 0.
  add(path) {
    const before = this.count;
    let x = 0, y = 0;
    for (const [, command, text] of path.matchAll(/([MLAC])([^MLAC]*)/g)) {
      const n = text.split(' ').map(Number);
      const endX = n[n.length - 2], endY = n[n.length - 1];
      if (command === 'L') this.push(kLine, x, y, endX, endY);
      if (command === 'A') this.push(kArc, x, y, endX, endY, arcOf(x, y, n));
      if (command === 'C') this.push(kCurve, x, y, endX, endY, n);
      x = endX;
      y = endY;
    }
    if (this.count === before && path) this.push(kLine, x, y, x, y);
    return this.count - before;
  }

  push(kind, x0, y0, x1, y1, more = []) {
    const at = this.count++ * kStride;
    if (at === this.numbers.length) {
      const grown = new Float64Array(2 * at);
      grown.set(this.numbers);
      this.numbers = grown;
    }
    this.numbers.set([kind, x0, y0, x1, y1], at);
    this.numbers.set(more.slice(0, kStride - 5), at + 5);
  }

  // The point at a part of the parameter, and the whole element's point from 0 to 1.
  point(element, t) {
    const n = this.numbers, i = element * kStride;
    if (n[i] === kArc) {
      const angle = n[i + 10] + t * n[i + 11];
      return ellipsePoint(n[i + 5], n[i + 6], n[i + 7], n[i + 8], n[i + 9], angle);
    }
    if (n[i] === kLine) return [n[i + 1] + t * (n[i + 3] - n[i + 1]), n[i + 2] + t * (n[i + 4] - n[i + 2])];
    const s = 1 - t, a = s * s * s, b = 3 * s * s * t, c = 3 * s * t * t, d = t * t * t;
    return [a * n[i + 1] + b * n[i + 5] + c * n[i + 7] + d * n[i + 3],
            a * n[i + 2] + b * n[i + 6] + c * n[i + 8] + d * n[i + 4]];
  }

  // A box that holds the element: [left, bottom, right, top].
  box(element) {
    const n = this.numbers, i = element * kStride;
    const xs = [n[i + 1], n[i + 3]], ys = [n[i + 2], n[i + 4]];
    if (n[i] === kCurve) xs.push(n[i + 5], n[i + 7]), ys.push(n[i + 6], n[i + 8]);
    if (n[i] === kArc) {
      // The extremes lie where the derivative along an axis vanishes.
      const cos = Math.cos(n[i + 9]), sin = Math.sin(n[i + 9]);
      const angleX = Math.atan2(-n[i + 8] * sin, n[i + 7] * cos), angleY = Math.atan2(n[i + 8] * cos, n[i + 7] * sin);
      for (const angle of [angleX, angleX + Math.PI, angleY, angleY + Math.PI]) {
        const t = turnPart(angle, n[i + 10], n[i + 11]);
        if (t > 1) continue;
        const [x, y] = this.point(element, t);
        xs.push(x), ys.push(y);
      }
    }
    return [Math.min(...xs), Math.min(...ys), Math.max(...xs), Math.max(...ys)];
  }

  // The parameter of the nearest point. A line and an arc of a circle have a formula; on others the nearest of
  // some samples is refined by thirds.
  nearest(element, x, y) {
    const n = this.numbers, i = element * kStride;
    if (n[i] === kLine) {
      const dx = n[i + 3] - n[i + 1], dy = n[i + 4] - n[i + 2], square = dx * dx + dy * dy;
      return square > 0 ? clamp(((x - n[i + 1]) * dx + (y - n[i + 2]) * dy) / square, 0, 1) : 0;
    }
    const distance = t => Math.hypot(...difference(this.point(element, t), [x, y]));
    if (n[i] === kArc && n[i + 7] === n[i + 8]) {
      const t = turnPart(Math.atan2(y - n[i + 6], x - n[i + 5]) - n[i + 9], n[i + 10], n[i + 11]);
      return t <= 1 ? t : distance(0) < distance(1) ? 0 : 1;
    }
    let best = 0;
    for (let k = 1; k <= kSamples; ++k) if (distance(k / kSamples) < distance(best)) best = k / kSamples;
    let low = Math.max(best - 1 / kSamples, 0), high = Math.min(best + 1 / kSamples, 1);
    for (let k = 0; k < 40; ++k) {
      const third = (high - low) / 3;
      if (distance(low + third) < distance(high - third)) high -= third;
      else low += third;
    }
    return (low + high) / 2;
  }

  // The length from the start to a parameter, by Simpson's rule over pieces of the curve.
  length(element, to = 1) {
    const n = this.numbers, i = element * kStride;
    if (n[i] === kLine) return to * Math.hypot(n[i + 3] - n[i + 1], n[i + 4] - n[i + 2]);
    if (n[i] === kArc && n[i + 7] === n[i + 8]) return to * n[i + 7] * Math.abs(n[i + 11]);
    const speed = t => Math.hypot(...difference(this.point(element, t + 1e-4), this.point(element, t - 1e-4))) / 2e-4;
    let sum = 0;
    for (let k = 0; k < kSamples; ++k) {
      const a = k * to / kSamples, b = (k + 1) * to / kSamples;
      sum += (speed(a) + 4 * speed((a + b) / 2) + speed(b)) / 6;
    }
    return sum * to / kSamples;
  }
}

function clamp(value, low, high) { return Math.min(Math.max(value, low), high); }
function difference(p, q) { return [p[0] - q[0], p[1] - q[1]]; }

function ellipsePoint(cx, cy, a, b, rotation, angle) {
  const u = a * Math.cos(angle), v = b * Math.sin(angle), cos = Math.cos(rotation), sin = Math.sin(rotation);
  return [cx + u * cos - v * sin, cy + u * sin + v * cos];
}

// Which part of a turn from a first angle an angle is at: 0 to 1 on the arc, more beside it.
function turnPart(angle, first, turn) {
  const full = 2 * Math.PI, way = (angle - first) * Math.sign(turn);
  return (way - Math.floor(way / full) * full) / Math.abs(turn);
}

// Centre, half axes, rotation, first angle and turn of an arc that path data give by its ends (SVG 1.1, F.6.5).
function arcOf(x0, y0, [a, b, degrees, longWay, grows, x1, y1]) {
  const rotation = degrees * Math.PI / 180, cos = Math.cos(rotation), sin = Math.sin(rotation);
  const dx = (x0 - x1) / 2, dy = (y0 - y1) / 2;
  const u = (cos * dx + sin * dy) / a, v = (cos * dy - sin * dx) / b; // on the unit circle, half the chord
  const half = u * u + v * v;
  const far = Math.sqrt(Math.max(1 / half - 1, 0)) * (longWay === grows ? -1 : 1);
  const cu = far * v, cv = -far * u; // the centre from the chord's middle
  const first = Math.atan2(v - cv, u - cu);
  let turn = Math.atan2(-v - cv, -u - cu) - first;
  if (grows && turn < 0) turn += 2 * Math.PI;
  if (!grows && turn > 0) turn -= 2 * Math.PI;
  return [(x0 + x1) / 2 + cos * a * cu - sin * b * cv, (y0 + y1) / 2 + sin * a * cu + cos * b * cv,
          a, b, rotation, first, turn];
}

// Boxes in a tree: sorted along a curve through the plane and gathered by kFan, so that the boxes of a node lie
// next to each other. What may be near a point is found among some dozens of boxes of any number.
const kFan = 16;

class BoxTree {
  // `boxes` holds four numbers for each thing: left, bottom, right, top.
  constructor(boxes, whole) {
    const count = boxes.length / 4, key = new Float64Array(count);
    const wide = 65535 / (whole[2] - whole[0] || 1), high = 65535 / (whole[3] - whole[1] || 1);
    for (let i = 0; i < count; ++i)
      key[i] = interleaved(((boxes[4 * i] + boxes[4 * i + 2]) / 2 - whole[0]) * wide,
                           ((boxes[4 * i + 1] + boxes[4 * i + 3]) / 2 - whole[1]) * high);
    this.things = Uint32Array.from(key.keys()).sort((i, j) => key[i] - key[j]);
    this.levels = [new Float64Array(4 * count)];
    this.things.forEach((thing, i) => this.levels[0].set(boxes.subarray(4 * thing, 4 * thing + 4), 4 * i));
    while (this.levels.at(-1).length > 4 * kFan) this.levels.push(gathered(this.levels.at(-1)));
  }

  // Calls `found` with every thing whose box meets a box.
  search(left, bottom, right, top, found, level = this.levels.length - 1, first = 0, last = Infinity) {
    const boxes = this.levels[level];
    for (let i = first; i < Math.min(last, boxes.length / 4); ++i) {
      const b = 4 * i;
      if (boxes[b] > right || boxes[b + 2] < left || boxes[b + 1] > top || boxes[b + 3] < bottom) continue;
      if (level === 0) found(this.things[i]);
      else this.search(left, bottom, right, top, found, level - 1, i * kFan, (i + 1) * kFan);
    }
  }
}

// The bits of two numbers of 16 bits in turn: near points mostly have near numbers.
function interleaved(x, y) {
  let key = 0;
  for (let bit = 1, place = 1; bit < 65536; bit *= 2, place *= 4) key += (x & bit ? place : 0) + (y & bit ? 2 * place : 0);
  return key;
}

function gathered(boxes) {
  const count = boxes.length / 4, parents = new Float64Array(4 * Math.ceil(count / kFan));
  for (let i = 0; i < count; ++i) {
    const p = 4 * Math.floor(i / kFan), b = 4 * i, isFirst = i % kFan === 0;
    for (const k of [0, 1]) parents[p + k] = isFirst ? boxes[b + k] : Math.min(parents[p + k], boxes[b + k]);
    for (const k of [2, 3]) parents[p + k] = isFirst ? boxes[b + k] : Math.max(parents[p + k], boxes[b + k]);
  }
  return parents;
}
