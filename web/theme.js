// The colours of the picture, which style.css has for the light and for the dark theme.

const NAMES = ['paper', 'A', 'B', 'fill', 'mesh', 'outline', 'grid'];

function read() {
  const style = getComputedStyle(document.documentElement);
  return Object.fromEntries(NAMES.map((name) => [name, style.getPropertyValue(`--${name}`).trim()]));
}

export let theme = read();

export function onThemeChange(listener) {
  matchMedia('(prefers-color-scheme: dark)').addEventListener('change', () => {
    theme = read();
    listener();
  });
}
