// Loads the page; where that fails, it says so.
import('./main.js').catch((error) => {
  document.querySelector('#request-notice p').textContent = `The page cannot be loaded: ${error.message}`;
});
