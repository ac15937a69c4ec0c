// Copying texts.
"use strict";

/** Copies a text and says so on the button that was pressed. */
async function copy_with(button, text) {
  const label = button.textContent;
  const is_copied = await copy_text(text);
  button.textContent = is_copied ? "Copied" : "Not copied";
  button.disabled = true; // for the label to come back
  setTimeout(() => Object.assign(button, { textContent: label, disabled: false }), 1500);
}

/** Browsers may deny the clipboard to pages that come from files, or from other machines without TLS. */
async function copy_text(text) {
  try {
    await navigator.clipboard.writeText(text);
    return true;
  } catch {
    const area = element("textarea", { value: text, className: "hidden_text" });
    document.body.append(area);
    area.select();
    const is_copied = document.execCommand("copy");
    area.remove();
    return is_copied;
  }
}
