// The drawing on a canvas: what is shown, where, and how it is moved. Every frame is drawn anew from the numbers,
// in pixels of the screen, so that lines keep their width and nothing loses digits at any zoom. What is smaller
// than a pixel becomes a dot, and points closer than half a pixel are left out: so the whole of a large drawing
// costs little more than a part of it. When very much is in sight, lines are one pixel of the device wide, which
// browsers without a graphics processor draw 15 times as fast as wider ones; and when a frame has taken long, the one
// that is there is moved and stretched as a picture until the movement rests. What is chosen or pointed at lies on a
// second canvas and moves without the drawing.

const kMarkPixels = 7; // the largest radius of a mark
const kLeastMark = 2.5; // pixels; smaller marks would be specks
const kDense = 4000; // elements in sight from which on lines are thin
const kChordError = 0.15; // pixels between an arc and the chords that take its place
const kSlow = 50; // ms of a frame from which on the drawing moves as a picture
const kRest = 120; // ms without a movement after which it is drawn anew
const kRun = 200; // outlines that are drawn at once; long paths take more than their share of time
const kDetail = 0.5; // pixels between points of an outline that are drawn
const kMargin = 24; // pixels round the whole drawing

class View {
  constructor(scene, looks) {
    this.scene = scene;
    this.looks = looks;
    this.base = document.getElementById('lines');
    this.over = document.getElementById('drawing');
    this.chosen = this.hovered = -1;
    this.spot = null; // the point on the hovered object
    this.cut = null; // how many objects of the order of cutting are cut
    this.onMove = () => {};
    new ResizeObserver(() => this.resize()).observe(this.base.parentElement);
    this.resize();
  }

  resize() {
    const { clientWidth, clientHeight } = this.base.parentElement;
    const isNew = !this.width;
    this.width = clientWidth;
    this.height = clientHeight;
    this.ratio = devicePixelRatio || 1;
    for (const canvas of [this.base, this.over]) {
      canvas.width = Math.round(clientWidth * this.ratio);
      canvas.height = Math.round(clientHeight * this.ratio);
    }
    if (isNew || this.isWhole) this.fit();
    else this.redraw();
  }

  screenX(x) { return (x - this.x) * this.scale + this.width / 2; }
  screenY(y) { return this.height / 2 - (y - this.y) * this.scale; }
  drawingPoint(x, y) { return [this.x + (x - this.width / 2) / this.scale, this.y + (this.height / 2 - y) / this.scale]; }

  // Shows a box; the whole drawing when none is given.
  fit(box) {
    this.isWhole = !box;
    const [left, bottom, right, top] = box || this.scene.box;
    const scale = Math.min((this.width - 2 * kMargin) / (right - left || 1e-9), (this.height - 2 * kMargin) / (top - bottom || 1e-9));
    if (this.isWhole) this.wholeScale = Math.max(scale, 1e-9);
    this.scale = this.bounded(scale);
    this.x = (left + right) / 2;
    this.y = (bottom + top) / 2;
    this.redraw();
  }

  bounded(scale) { return clamp(scale, this.wholeScale / 20, this.wholeScale * 1e6); }

  // Zooms about a point of the screen, which stays where it is.
  zoom(factor, x = this.width / 2, y = this.height / 2) {
    const [fixedX, fixedY] = this.drawingPoint(x, y);
    this.scale = this.bounded(this.scale * factor);
    this.x = fixedX - (x - this.width / 2) / this.scale;
    this.y = fixedY + (y - this.height / 2) / this.scale;
    this.moved();
  }

  pan(dx, dy) {
    this.x -= dx / this.scale;
    this.y += dy / this.scale;
    this.moved();
  }

  moved() {
    this.isWhole = false;
    this.redraw(true);
  }

  // Brings an object into sight: moved when it is out of the window, zoomed when it is too small to be seen or on
  // request.
  reveal(object, isZoomed = false) {
    const [left, bottom, right, top] = this.scene.boxOf(object);
    const across = Math.max(right - left, top - bottom);
    if (isZoomed || across * this.scale < 4) {
      const room = Math.max(across, (this.scene.box[2] - this.scene.box[0]) * 1e-5) * 0.6;
      const x = (left + right) / 2, y = (bottom + top) / 2;
      this.fit([x - room, y - room, x + room, y + room]);
    } else if (this.screenX(left) > this.width || this.screenX(right) < 0 || this.screenY(top) > this.height || this.screenY(bottom) < 0) {
      this.x = (left + right) / 2;
      this.y = (bottom + top) / 2;
      this.moved();
    }
  }

  // Draws in the next frame: all of it, or while a large drawing moves what is there as a picture.
  redraw(isMoving = false) {
    this.isMoving = isMoving && this.cost > kSlow;
    this.frame ??= requestAnimationFrame(begin => {
      this.frame = null;
      if (this.isMoving) {
        this.movePicture();
      } else {
        this.draw();
        requestAnimationFrame(end => this.cost = end - begin);
      }
      this.drawOver();
      this.onMove();
    });
  }

  movePicture() {
    const { x, y, scale } = this.drawn, zoom = this.scale / scale;
    const right = this.width / 2 * (1 - zoom) + (x - this.x) * this.scale;
    const down = this.height / 2 * (1 - zoom) + (this.y - y) * this.scale;
    this.base.style.transform = `translate(${right}px, ${down}px) scale(${zoom})`;
    clearTimeout(this.rest);
    this.rest = setTimeout(() => this.redraw(), kRest);
  }

  redrawOver() {
    this.overFrame ??= requestAnimationFrame(() => {
      this.overFrame = null;
      this.drawOver();
    });
  }

  begin(canvas) {
    this.window = [...this.drawingPoint(0, this.height), ...this.drawingPoint(this.width, 0)];
    const context = canvas.getContext('2d');
    context.setTransform(this.ratio, 0, 0, this.ratio, 0, 0);
    context.clearRect(0, 0, this.width, this.height);
    context.lineJoin = 'round';
    return context;
  }

  draw() {
    const context = this.begin(this.base), scene = this.scene;
    this.drawn = { x: this.x, y: this.y, scale: this.scale };
    this.base.style.transform = '';
    this.traced = 0;
    for (const group of scene.groups) {
      if (!scene.styleShown[group.style] || (group.layer >= 0 && !scene.layerShown[group.layer])) continue;
      context.globalAlpha = this.cut !== null && group.layer >= 0 ? 0.35 : 1;
      this.drawGroup(context, group);
    }
    context.globalAlpha = 1;
    scene.spots.forEach((spots, style) => scene.styleShown[style] && this.drawSpots(context, style, spots));
    const isDense = this.traced > kDense;
    if (isDense !== this.isDense) this.redraw();
    this.isDense = isDense;
  }

  drawGroup(context, { style, colour, outlines }) {
    this.setLine(context, style);
    if (this.isColoured && colour) context.strokeStyle = context.fillStyle = this.looks.visible(colour);
    const isFilled = this.looks.of(style).isFilled, run = isFilled ? 1 : kRun;
    for (let first = 0; first < outlines.length; first += run) {
      const end = Math.min(first + run, outlines.length);
      context.beginPath();
      for (let i = first; i < end; ++i) this.trace(context, outlines[i]);
      if (isFilled) context.fill('evenodd');
      else context.stroke();
    }
  }

  setLine(context, style) {
    const look = this.looks.of(style);
    context.strokeStyle = context.fillStyle = look.colour;
    context.lineWidth = this.isDense ? 1 / this.ratio : look.width;
    context.setLineDash(this.isDense ? [] : look.dash);
  }

  // Adds the part of an outline that is in the window to the context's path.
  trace(context, outline) {
    const boxes = this.scene.boxes, [left, bottom, right, top] = this.window, b = 4 * outline;
    if (boxes[b] > right || boxes[b + 2] < left || boxes[b + 1] > top || boxes[b + 3] < bottom) return;
    ++this.traced;
    if (Math.max(boxes[b + 2] - boxes[b], boxes[b + 3] - boxes[b + 1]) * this.scale < 1) {
      context.rect(this.screenX(boxes[b]), this.screenY(boxes[b + 3]), 0.5, 0.5);
      return;
    }
    const isInside = boxes[b] >= left && boxes[b + 2] <= right && boxes[b + 1] >= bottom && boxes[b + 3] <= top;
    this.penX = this.penY = NaN;
    const end = this.scene.firsts[outline + 1];
    for (let element = this.scene.firsts[outline]; element < end; ++element)
      if (isInside || this.isSeen(element)) this.traceElement(context, element);
  }

  isSeen(element) {
    const boxes = this.scene.elementBoxes, b = 4 * element, [left, bottom, right, top] = this.window;
    return boxes[b] <= right && boxes[b + 2] >= left && boxes[b + 1] <= top && boxes[b + 3] >= bottom;
  }

  traceElement(context, element) {
    ++this.traced;
    const n = this.scene.outlines.numbers, i = element * kStride;
    const x0 = this.screenX(n[i + 1]), y0 = this.screenY(n[i + 2]);
    if (!(Math.abs(x0 - this.penX) < 1e-3 + kDetail && Math.abs(y0 - this.penY) < 1e-3 + kDetail)) {
      context.moveTo(x0, y0);
      this.penX = x0;
      this.penY = y0;
    }
    const x1 = this.screenX(n[i + 3]), y1 = this.screenY(n[i + 4]);
    const boxes = this.scene.elementBoxes, b = 4 * element;
    const isSmall = Math.max(boxes[b + 2] - boxes[b], boxes[b + 3] - boxes[b + 1]) * this.scale < 2;
    if (n[i] === kLine || isSmall) {
      if (Math.abs(x1 - this.penX) < kDetail && Math.abs(y1 - this.penY) < kDetail) return;
      context.lineTo(x1, y1);
    } else if (n[i] === kCurve) {
      context.bezierCurveTo(this.screenX(n[i + 5]), this.screenY(n[i + 6]), this.screenX(n[i + 7]), this.screenY(n[i + 8]), x1, y1);
    } else {
      this.traceArc(context, element);
    }
    this.penX = x1;
    this.penY = y1;
  }

  // The canvas loses digits with large radii and time with many arcs. There chords take the arc's place, which stay
  // within a part of a pixel of it: that of a circle of radius r leaves it by r times the square of its angle / 8.
  traceArc(context, element) {
    const n = this.scene.outlines.numbers, i = element * kStride;
    const a = n[i + 7] * this.scale, c = n[i + 8] * this.scale, turn = n[i + 11], largest = Math.max(a, c);
    if (largest < 2e4 && !this.isDense) {
      context.ellipse(this.screenX(n[i + 5]), this.screenY(n[i + 6]), a, c, -n[i + 9], -n[i + 10], -n[i + 10] - turn, turn > 0);
      return;
    }
    const chords = Math.min(Math.ceil(Math.abs(turn) / Math.sqrt(8 * kChordError / largest)), 20000);
    for (let k = 1; k <= chords; ++k) {
      const [x, y] = this.scene.outlines.point(element, k / chords);
      context.lineTo(this.screenX(x), this.screenY(y));
    }
  }

  drawSpots(context, style, spots) {
    const look = this.looks.of(style);
    this.setLine(context, style);
    context.setLineDash([]);
    context.beginPath();
    for (const spot of spots) this.traceSpot(context, look.form, spot);
    if (look.isFilled) context.fill();
    else context.stroke();
  }

  traceSpot(context, form, [, x, y, size, alongX, alongY]) {
    const radius = Math.min(size * this.scale, kMarkPixels);
    if (radius < kLeastMark) return;
    const px = this.screenX(x), py = this.screenY(y);
    if (px < -radius || py < -radius || px > this.width + radius || py > this.height + radius) return;
    traceMark(context, form, px, py, form === 'arrow' ? 1.4 * radius : radius, alongX, alongY);
  }

  drawOver() {
    const context = this.begin(this.over);
    if (this.cut !== null) this.drawCut(context);
    if (this.hovered >= 0 && this.hovered !== this.chosen) this.light(context, this.hovered, 1.5, 5);
    if (this.chosen >= 0) this.light(context, this.chosen, 3, 10);
    if (this.isNumbered) this.drawNumbers(context);
    if (!this.spot) return;
    context.beginPath();
    context.arc(this.screenX(this.spot[0]), this.screenY(this.spot[1]), 4, 0, 2 * Math.PI);
    context.fillStyle = this.looks.accent;
    context.fill();
  }

  // An outline over itself, with a wide shine round it.
  light(context, object, width, shine) {
    context.strokeStyle = this.looks.accent;
    context.beginPath();
    this.trace(context, object);
    for (const [wide, alpha] of [[shine, 0.3], [width, 1]]) {
      context.lineWidth = wide;
      context.globalAlpha = alpha;
      context.stroke();
    }
    context.globalAlpha = 1;
  }

  // The objects that are cut already and the one at work.
  drawCut(context) {
    const order = this.scene.order;
    context.beginPath();
    context.strokeStyle = this.looks.of(0).colour;
    context.lineWidth = 2;
    for (const object of order.slice(0, this.cut)) this.trace(context, object);
    context.stroke();
    if (this.cut > 0) this.light(context, order[this.cut - 1], 3, 8);
  }

  // The number of each object of the order where the tool comes down.
  drawNumbers(context) {
    context.font = 'bold 12px system-ui, sans-serif';
    context.textAlign = 'center';
    context.textBaseline = 'middle';
    this.scene.steps.forEach((step, place) => this.drawNumber(context, step, place));
  }

  drawNumber(context, [object, startX, startY], place) {
    const x = this.screenX(startX), y = this.screenY(startY);
    const [left, bottom, right, top] = this.scene.boxOf(object);
    if (Math.max(right - left, top - bottom) * this.scale < 12) return;
    context.beginPath();
    context.arc(x, y, 10, 0, 2 * Math.PI);
    context.fillStyle = place < this.cut ? this.looks.accent : this.looks.ground;
    context.strokeStyle = this.looks.accent;
    context.lineWidth = 1.5;
    context.fill();
    context.stroke();
    context.fillStyle = place < this.cut ? this.looks.ground : this.looks.accent;
    context.fillText(place + 1, x, y + 0.5);
  }

}

// Adds a mark to the context's path. The direction of an arrow is one with y up.
function traceMark(context, form, x, y, r, alongX, alongY) {
  const polygon = points => points.forEach(([dx, dy], i) => i ? context.lineTo(x + dx, y + dy) : context.moveTo(x + dx, y + dy));
  if (form === 'square') {
    context.rect(x - r, y - r, 2 * r, 2 * r);
  } else if (form === 'arrow') {
    polygon([[0, 0], [-r * (alongX - alongY / 3), r * (alongY + alongX / 3)], [-r * (alongX + alongY / 3), r * (alongY - alongX / 3)]]);
  } else if (form === 'diamond') {
    polygon([[-r, 0], [0, -r], [r, 0], [0, r]]);
  } else if (form === 'cross') {
    polygon([[-r, 0], [r, 0]]);
    polygon([[0, -r], [0, r]]);
  } else {
    context.moveTo(x + r, y);
    context.arc(x, y, r, 0, 2 * Math.PI);
  }
}
