// The worker: answers each message with its number. It listens before the rest is loaded,
// for a message that comes meanwhile would be lost.
const loaded = import('./requests.js');

addEventListener('message', async ({ data }) => {
  const { number, request } = data;
  try {
    const { requests } = await loaded;
    const answer = await requests[request](data, (stage) => postMessage({ number, stage }));
    postMessage({ number, answer }, answer.bitmap ? [answer.bitmap] : []);
  } catch (error) {
    postMessage({ number, error: error.message });
  }
});
