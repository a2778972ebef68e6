// Puts the page together: the data become a scene, and what the user does with the drawing, the table or the
// switches reaches the others through choose() and hover().

const kReach = 12; // pixels within which an object is pointed at
const kHint = 'Drag to move, turn the wheel to zoom, point at a contour or click it';
const kClickPixels = 4; // a pointer that moves farther drags the drawing

const data = JSON.parse(document.getElementById('data').textContent);
const byId = id => document.getElementById(id);

// The columns of a row of data.objects.
const [kKind, kLayer, kStyle, kSegments, kLength, kArea, kClosed, kDirection, kCorners, kTechnics, kColour, kPath] = Array(12).keys();

class Scene {
  constructor() {
    const [x, y, width, height] = data.box;
    this.box = [x, y, x + width, y + height];
    this.outlines = new Outlines();
    this.steps = data.steps;
    this.order = data.steps.map(([object]) => object);
    this.spots = data.styles.map((_, style) => data.spots.filter(spot => spot[0] === style));
    this.styleShown = data.styles.map(() => true);
    this.layerShown = data.layers.map(() => true);
    // Outlines are numbered: first the objects, then the curves over the drawing.
    const paths = [...data.objects.map(row => row[kPath]), ...data.curves.map(row => row[1])];
    this.firsts = new Uint32Array(paths.length + 1);
    paths.forEach((path, i) => this.firsts[i + 1] = this.firsts[i] + this.outlines.add(path));
    this.elementBoxes = new Float64Array(4 * this.outlines.count);
    for (let i = 0; i < this.outlines.count; ++i) this.elementBoxes.set(this.outlines.box(i), 4 * i);
    this.boxes = new Float64Array(4 * paths.length);
    paths.forEach((path, i) => this.boxes.set(this.hull(i), 4 * i));
    this.objectEnd = this.firsts[data.objects.length];
    this.owners = new Uint32Array(this.objectEnd);
    data.objects.forEach((row, i) => this.owners.fill(i, this.firsts[i], this.firsts[i + 1]));
    this.tree = new BoxTree(this.elementBoxes.subarray(0, 4 * this.objectEnd), this.box);
    this.groups = this.grouped();
  }

  hull(outline) {
    const box = [Infinity, Infinity, -Infinity, -Infinity];
    for (let b = 4 * this.firsts[outline]; b < 4 * this.firsts[outline + 1]; b += 4)
      for (const k of [0, 1]) {
        box[k] = Math.min(box[k], this.elementBoxes[b + k]);
        box[k + 2] = Math.max(box[k + 2], this.elementBoxes[b + k + 2]);
      }
    return box;
  }

  // Outlines that are drawn alike: objects by layer and style, then curves by style.
  grouped() {
    const groups = new Map();
    const add = (outline, layer, style, colour = '') => {
      const key = `${layer} ${style} ${colour}`;
      if (!groups.has(key)) groups.set(key, { layer, style, colour, outlines: [] });
      groups.get(key).outlines.push(outline);
    };
    data.objects.forEach((row, i) => add(i, row[kLayer], row[kStyle], row[kColour]));
    const objects = [...groups.values()];
    groups.clear();
    data.curves.forEach(([style], i) => add(data.objects.length + i, -1, style));
    return [...objects, ...[...groups.values()].sort((a, b) => a.style - b.style)];
  }

  boxOf(object) { return this.boxes.subarray(4 * object, 4 * object + 4); }
  isShown(object) {
    const row = data.objects[object];
    return this.layerShown[row[kLayer]] && this.styleShown[row[kStyle]];
  }

  // The nearest shown object within a reach of a point: object, element, parameter, point; null when there is none.
  pick(x, y, reach) {
    let nearest = null, least = reach;
    this.tree.search(x - reach, y - reach, x + reach, y + reach, element => {
      const object = this.owners[element];
      if (!this.isShown(object)) return;
      const t = this.outlines.nearest(element, x, y), point = this.outlines.point(element, t);
      const distance = Math.hypot(point[0] - x, point[1] - y);
      if (distance > least || (distance === least && nearest)) return;
      least = distance;
      nearest = { object, element, t, point };
    });
    return nearest;
  }

  // Segment and ratio of a picked point, as the library counts: an ellipse of two arcs is one segment, and the
  // ratio is one of lengths.
  position({ object, element, t }) {
    const first = this.firsts[object], last = this.firsts[object + 1];
    const isOne = data.objects[object][kSegments] === 1;
    const from = isOne ? first : element, to = isOne ? last : element + 1;
    let whole = 0, before = 0;
    for (let i = from; i < to; ++i) {
      const length = this.outlines.length(i);
      if (i < element) before += length;
      whole += length;
    }
    return { segment: isOne ? 0 : element - first, ratio: whole > 0 ? (before + this.outlines.length(element, t)) / whole : 0 };
  }
}

// The colours and widths of the styles on the ground that is shown.
class Looks {
  constructor() {
    this.media = matchMedia('(prefers-color-scheme: dark)');
    this.theme = null;
    this.update();
  }
  get isDark() { return this.theme ? this.theme === 'dark' : this.media.matches; }
  update() {
    this.list = data.styles.map(style => ({
      colour: this.isDark ? style.dark : style.light, width: style.width, form: style.form, isFilled: style.isFilled,
      dash: style.dash ? style.dash.split(' ').map(Number) : [],
    }));
    const stage = getComputedStyle(byId('stage'));
    this.accent = stage.outlineColor;
    this.ground = stage.backgroundColor;
  }
  of(style) { return this.list[style]; }

  // A colour of the drawing as it is seen on the ground.
  visible(colour) { return data.colours[colour][this.isDark ? 1 : 0]; }
}

const scene = new Scene();
const looks = new Looks();
const view = new View(scene, looks);
const shownLength = mm => (mm * data.perMm).toFixed(data.digits);
const shownArea = mm2 => mm2 > 0 ? (mm2 * data.perMm ** 2).toFixed(data.digits) : '';
const layerName = object => data.layers[data.objects[object][kLayer]];
const columns = makeColumns();
const table = new Table(columns, data.objects.length, object => `${object} ${data.objects[object][kKind]} ${layerName(object)}`);

function makeColumns() {
  const number = (title, column, text = value => value) => ({
    title, isNumber: true, value: object => data.objects[object][column], text: object => text(data.objects[object][column]),
  });
  const isDim = object => !scene.isShown(object);
  const list = [
    { title: '#', isNumber: true, value: object => object, text: object => object },
    { title: 'kind', value: object => data.objects[object][kKind], text: object => data.objects[object][kKind], isDim },
    { title: 'layer', value: layerName, text: layerName, isDim },
    number(`length ${data.unit}`, kLength, shownLength),
    number(`area ${data.unit}\u00b2`, kArea, shownArea),
    { title: 'closed', value: closedText, text: closedText },
    number('segments', kSegments, value => value > 0 ? value : ''),
    number('corners', kCorners, value => value || ''),
  ];
  if (data.objects.some(row => row[kTechnics])) list.push(number('technics', kTechnics, value => value || ''));
  const places = new Map(scene.order.map((object, place) => [object, place + 1]));
  if (places.size) list.splice(1, 0, { title: 'order', isNumber: true, value: object => places.get(object) ?? Infinity, text: object => places.get(object) ?? '' });
  return list;
}

function closedText(object) {
  const row = data.objects[object];
  return row[kClosed] && row[kSegments] > 0 ? ['yes', 'cw', 'ccw'][row[kDirection]] : '';
}

function describe(object) {
  const row = data.objects[object];
  const parts = [`object ${object}`, row[kKind], `layer ${layerName(object)}`];
  if (row[kSegments] > 0) parts.push(`${shownLength(row[kLength])} ${data.unit}`);
  if (row[kArea] > 0) parts.push(`${shownArea(row[kArea])} ${data.unit}\u00b2`);
  return parts.join(', ');
}

function choose(object, isFromDrawing) {
  view.chosen = object;
  view.redrawOver();
  table.choose(object, isFromDrawing);
  if (object >= 0 && !isFromDrawing) view.reveal(object);
  byId('chosen').textContent = object >= 0 ? describe(object) : kHint;
}

function hover(object, point = null) {
  view.hovered = object;
  view.spot = point;
  view.redrawOver();
  table.hover(object);
}

table.onChoose = (object, isByKey) => {
  choose(object, false);
  if (isByKey) table.scrollTo(object), table.fill();
};
table.onHover = object => hover(object);
table.onOpen = object => view.reveal(object, true);
view.onMove = () => showScale();

// The pointer over the drawing: one drags or points, two pinch.

const pointers = new Map();
let dragged = 0;

function pointAt(event) {
  const frame = view.over.getBoundingClientRect();
  return [event.clientX - frame.left, event.clientY - frame.top];
}

function pickAt([x, y]) {
  return scene.pick(...view.drawingPoint(x, y), kReach / view.scale);
}

function showTip([x, y], picked) {
  const tip = byId('tip');
  tip.hidden = !picked;
  if (!picked) return;
  const { segment, ratio } = scene.position(picked), row = data.objects[picked.object];
  const place = row[kSegments] > 0 ? `segment ${segment}, ratio ${ratio.toFixed(4)}\n` : '';
  tip.textContent = `object ${picked.object}: ${row[kKind]}\nlayer ${layerName(picked.object)}\n${place}(${shownPoint(picked.point)})`;
  tip.style.left = Math.min(x + 16, Math.max(view.width - tip.offsetWidth - 4, 0)) + 'px';
  tip.style.top = (y + 20 + tip.offsetHeight < view.height ? y + 18 : Math.max(y - 12 - tip.offsetHeight, 0)) + 'px';
}

function shownPoint([x, y]) { return `${shownLength(x)}, ${shownLength(y)}`; }

function point(event) {
  const at = pointAt(event), picked = pickAt(at);
  hover(picked ? picked.object : -1, picked && picked.point);
  view.over.classList.toggle('over', Boolean(picked));
  showTip(at, picked);
  byId('pointer').textContent = `${shownPoint(view.drawingPoint(...at))} ${data.unit}`;
}

function leave() {
  hover(-1);
  showTip([0, 0], null);
  byId('pointer').textContent = '';
}

function drag(event) {
  const before = pointers.get(event.pointerId), now = pointAt(event);
  pointers.set(event.pointerId, now);
  dragged += Math.hypot(...difference(now, before));
  const other = [...pointers].find(([id]) => id !== event.pointerId)?.[1];
  if (other) {
    const gap = Math.hypot(...difference(before, other));
    if (gap > 0) view.zoom(Math.hypot(...difference(now, other)) / gap, ...other);
  } else if (dragged > kClickPixels) {
    view.over.classList.add('moving');
    view.pan(...difference(now, before));
  }
}

view.over.addEventListener('pointerdown', event => {
  if (event.button !== 0) return;
  if (pointers.size === 0) dragged = 0;
  pointers.set(event.pointerId, pointAt(event));
  view.over.setPointerCapture(event.pointerId);
});
view.over.addEventListener('pointermove', event => {
  if (!pointers.has(event.pointerId)) point(event);
  else drag(event), showTip([0, 0], null);
});
view.over.addEventListener('pointerup', event => {
  if (!pointers.delete(event.pointerId)) return;
  view.over.classList.remove('moving');
  if (dragged <= kClickPixels) choose(pickAt(pointAt(event))?.object ?? -1, true);
});
view.over.addEventListener('pointercancel', event => pointers.delete(event.pointerId));
view.over.addEventListener('pointerleave', leave);
view.over.addEventListener('dblclick', event => view.zoom(2, ...pointAt(event)));
view.over.addEventListener('wheel', event => {
  event.preventDefault();
  const pixels = event.deltaY * [1, 16, 400][event.deltaMode];
  view.zoom(Math.exp(-clamp(pixels, -400, 400) * (event.ctrlKey ? 0.01 : 0.002)), ...pointAt(event));
}, { passive: false });

const kKeys = {
  ArrowLeft: () => view.pan(60, 0), ArrowRight: () => view.pan(-60, 0),
  ArrowUp: () => view.pan(0, 60), ArrowDown: () => view.pan(0, -60),
  '+': () => view.zoom(1.3), '=': () => view.zoom(1.3), '-': () => view.zoom(1 / 1.3),
  0: () => view.fit(), Home: () => view.fit(), Escape: () => choose(-1, true),
  Enter: () => view.chosen >= 0 && view.reveal(view.chosen, true),
};
view.over.addEventListener('keydown', event => {
  if (!(event.key in kKeys) || event.ctrlKey || event.metaKey || event.altKey) return;
  event.preventDefault();
  kKeys[event.key]();
});

// The switches, the scale, the theme and the order of cutting.

function addSwitch(parent, text, count, shown, index, swatch) {
  const label = byId(parent).appendChild(document.createElement('label'));
  const box = label.appendChild(document.createElement('input'));
  box.type = 'checkbox';
  box.checked = true;
  box.addEventListener('change', () => {
    shown[index] = box.checked;
    view.redraw();
    table.fill();
  });
  if (swatch) label.append(swatch);
  const name = label.appendChild(document.createElement('span'));
  name.textContent = name.title = text;
  label.appendChild(document.createElement('small')).textContent = count;
}

// A canvas of the legend that shows a style as the drawing does.
function makeSwatch(style) {
  const canvas = document.createElement('canvas');
  canvas.className = 'swatch';
  canvas.dataset.style = style;
  return canvas;
}

function drawSwatches() {
  for (const canvas of document.querySelectorAll('.swatch')) {
    const ratio = devicePixelRatio || 1, style = Number(canvas.dataset.style), look = looks.of(style);
    canvas.width = 34 * ratio;
    canvas.height = 16 * ratio;
    const context = canvas.getContext('2d');
    context.scale(ratio, ratio);
    context.strokeStyle = context.fillStyle = look.colour;
    context.lineWidth = look.width;
    context.setLineDash(look.dash);
    context.beginPath();
    if (look.form === 'line') context.moveTo(1, 8.5), context.lineTo(33, 8.5);
    else if (look.form === 'area') context.rect(1, 3, 32, 10);
    else traceMark(context, look.form, look.form === 'arrow' ? 25 : 17, 8, look.form === 'arrow' ? 10 : 5.5, 1, 0);
    if (look.isFilled) context.fill();
    else context.stroke();
  }
}

function addSwitches() {
  const lines = data.styles.map(() => 0), spots = data.styles.map(() => 0), layers = data.layers.map(() => 0);
  for (const row of data.objects) ++lines[row[kStyle]], ++layers[row[kLayer]];
  for (const [style] of data.curves) ++lines[style];
  for (const [style] of data.spots) ++spots[style];
  data.styles.forEach((style, i) => {
    if (lines[i] + spots[i] === 0) return;
    addSwitch('styles', style.title, lines[i] + spots[i], scene.styleShown, i, makeSwatch(i));
  });
  data.layers.forEach((name, i) => addSwitch('layers', name || '(no name)', layers[i], scene.layerShown, i));
}

// The longest of 1, 2 and 5 times a power of ten that a bar of 160 pixels can show.
function showScale() {
  const most = 160 / view.scale * data.perMm, power = 10 ** Math.floor(Math.log10(most));
  const length = power * (most < 2 * power ? 1 : most < 5 * power ? 2 : 5);
  byId('scale').style.width = length / data.perMm * view.scale + 'px';
  byId('scale').firstElementChild.textContent = `${Number(length.toPrecision(1))} ${data.unit}`;
}

function showTheme() {
  byId('theme').textContent = looks.isDark ? 'Light' : 'Dark';
  looks.update();
  drawSwatches();
  view.redraw();
}

function showSummary() {
  document.title = byId('name').textContent = data.name;
  const count = data.objects.length, closed = data.objects.filter(row => row[kClosed] && row[kSegments] > 0).length;
  byId('summary').textContent = `${count} objects, ${closed} closed, ${data.layers.length} layers`;
  view.over.setAttribute('aria-label', `Drawing ${data.name}`);
}

function showStep(step) {
  view.cut = step > 0 ? step : null;
  byId('step').value = step;
  byId('step-text').textContent = `${step} of ${scene.order.length}`;
  if (step > 0) choose(scene.order[step - 1], true);
  view.redraw();
}

let player = null;
function play(isOn) {
  clearInterval(player);
  player = isOn ? setInterval(() => {
    const step = Number(byId('step').value);
    if (step >= scene.order.length) play(false);
    else showStep(step + 1);
  }, 500) : null;
  byId('play').textContent = isOn ? '\u23f8' : '\u25b6';
  byId('play').setAttribute('aria-label', isOn ? 'Pause' : 'Play the order of cutting');
}

function startOrder() {
  byId('cutting').hidden = scene.order.length === 0;
  byId('step').max = scene.order.length;
  byId('step-text').textContent = `0 of ${scene.order.length}`;
  view.isNumbered = scene.order.length > 0;
  byId('numbers').addEventListener('change', event => {
    view.isNumbered = event.target.checked;
    view.redrawOver();
  });
  byId('step').addEventListener('input', event => showStep(Number(event.target.value)));
  byId('play').addEventListener('click', () => {
    if (!player && Number(byId('step').value) >= scene.order.length) showStep(0);
    play(!player);
  });
}

byId('coloured-label').hidden = data.objects.every(row => !row[kColour]);
view.isColoured = byId('coloured').checked;
byId('coloured').addEventListener('change', event => {
  view.isColoured = event.target.checked;
  view.redraw();
});
byId('chosen').textContent = kHint;
addSwitches();
showSummary();
startOrder();
showTheme();
looks.media.addEventListener('change', showTheme);
byId('zoom-in').addEventListener('click', () => view.zoom(1.5));
byId('zoom-out').addEventListener('click', () => view.zoom(1 / 1.5));
byId('fit').addEventListener('click', () => view.fit());
byId('filter').addEventListener('input', event => table.filter(event.target.value));
byId('show-table').addEventListener('click', event => {
  const isShown = byId('side').hidden;
  byId('side').hidden = !isShown;
  event.target.setAttribute('aria-pressed', isShown);
});
byId('theme').addEventListener('click', () => {
  looks.theme = looks.isDark ? 'light' : 'dark';
  document.documentElement.dataset.theme = looks.theme;
  showTheme();
});
