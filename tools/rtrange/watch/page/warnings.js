// What a viewer must know at once.
"use strict";

/** The senders that have been silent for long, in words. */
function silences({ now, state, senders }, is_shown) {
  if (state !== "running") return [];
  const packets = { navigation: "NCOM", range: "range packets" };
  const silence = now - Math.max(...senders.map(({ last }) => last));
  if (senders.length > 1 && silence > longest_silence_s) return [`Nothing received for ${seconds_text(silence, 1)}`];
  return senders
    .filter(({ unit, kind, last }) => kind in packets && is_shown(unit) && now - last > longest_silence_s)
    .map(({ unit, kind, last }) => {
      const from = kind === "range" ? "about" : "from";
      return `No ${packets[kind]} ${from} ${in_sentence(unit)} for ${seconds_text(now - last, 1)}`;
    });
}

function in_sentence(unit) {
  const name = unit_name(unit);
  return unit in unit_names && unit !== "rcom" ? name.toLowerCase() : name;
}

/** Shows warnings, and hints that are none. Changes the page only if they have changed. */
function show_warnings(warnings, hints) {
  const area = document.getElementById("warnings");
  const texts = [...warnings, ...hints];
  while (area.children.length > texts.length) area.lastChild.remove();
  while (area.children.length < texts.length) area.append(element("p"));
  texts.forEach((text, i) => {
    const line = area.children[i];
    if (line.textContent !== text) line.textContent = text;
    line.className = i < warnings.length ? "warning" : "hint";
  });
}
