// What the page tells besides the answer, until it is dismissed or does not hold any more:
// one notice of what the user asked for ('request'), one of the answer ('answer').

const dismissed = {};  // the text that the user does not want to see again

const elementOf = (source) => document.getElementById(`${source}-notice`);

/** An empty text takes the notice away. */
export function showNotice(source, text, isError = false) {
  const element = elementOf(source);
  if (text !== dismissed[source]) delete dismissed[source];
  const shown = dismissed[source] === undefined ? text : '';
  const words = element.querySelector('p');
  if (words.textContent !== shown) words.textContent = shown;
  element.classList.toggle('error', isError);
}

function dismiss(source) {
  const text = elementOf(source).querySelector('p').textContent;
  showNotice(source, '');
  dismissed[source] = text;
}

/** @return whether there was one */
export function dismissNotices() {
  const shown = ['request', 'answer'].filter((source) => elementOf(source).querySelector('p').textContent !== '');
  shown.forEach(dismiss);
  return shown.length > 0;
}

export function listenToNotices() {
  for (const source of ['request', 'answer']) {
    elementOf(source).querySelector('button').addEventListener('click', () => dismiss(source));
  }
}
