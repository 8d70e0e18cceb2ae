// The worker as the page sees it: requests that answer later, and an end to all of them when
// the user does not want to wait.

let worker = null;
let number = 0;
const open = new Map();

function start() {
  worker = new Worker(new URL('worker.js', import.meta.url), { type: 'module' });
  worker.addEventListener('message', ({ data }) => {
    const request = open.get(data.number);
    if (!request) return;
    if (data.stage) {
      request.stage?.(data.stage);
      return;
    }
    open.delete(data.number);
    if (data.error) request.reject(new Error(data.error));
    else request.resolve(data.answer);
  });
  worker.addEventListener('error', (event) => endAll(new Error(event.message || 'The worker cannot be started.')));
}

const enders = [];
/** Calls the listener when the worker was ended, with all that it knew. */
export const onEnd = (listener) => enders.push(listener);

function endAll(reason) {
  worker?.terminate();
  worker = null;
  for (const listener of enders) listener();
  for (const { reject } of open.values()) reject(reason);
  open.clear();
}

/** One of requests.js. @param stage is called with what is being done */
export function ask(request, data = {}, stage) {
  if (!worker) start();
  return new Promise((resolve, reject) => {
    open.set(++number, { resolve, reject, stage });
    worker.postMessage({ number, request, ...data });
  });
}

export class Cancelled extends Error {}

export function cancel() {
  endAll(new Cancelled('Cancelled.'));
}
